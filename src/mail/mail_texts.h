#pragma once
// The texts of a list of mails: one block of memory, usually the bytes of the file that they were
// read from, and four bytes a row that say where in it the row begins. A list of a million mails is
// little larger than its file, and a search is one sweep over it. Lists may share the texts; once
// shared they do not change any more. Rows count from 0.

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "base/flat_array.h"

namespace brindle {

// Rows stand in the block like this: the number, marks (".)([]") which do not count, a tab, the
// title, LF. Where the title is empty there may be no marks and no tab. Other bytes are all LF.
struct MailRows {
  FlatArray<char> text;
  FlatArray<std::uint32_t> begins;
  std::uint64_t leads = ~std::uint64_t{0};  // that there may be in the text; see Utf8Check
};

class MailTexts {
 public:
  // So many bytes may be read behind the text; they mean nothing.
  static constexpr size_t kSlack = 72;
  // Of text. The number of rows fits then, too.
  static constexpr size_t kMostText = std::numeric_limits<std::uint32_t>::max() - kSlack;

  MailTexts() = default;
  // The rows' titles are valid UTF-8.
  explicit MailTexts(MailRows rows);

  // Adds one row. False when it was refused because the text would pass 4 GiB.
  // REQUIRES: neither text holds an LF, the number neither marks nor a tab.
  bool Append(std::string_view number, std::string_view title);

  size_t Size() const { return rows_.begins.Size(); }

  // The texts of a row; valid until the rows change. REQUIRES: row < Size().
  std::string_view Number(size_t row) const;
  std::string_view Title(size_t row) const;

  // For searching: the whole text, and where in it the rows begin.
  std::string_view Text() const { return {rows_.text.Data(), rows_.text.Size()}; }
  const std::uint32_t* Begins() const { return rows_.begins.Data(); }

  // The rows in whose titles a search of the text as it stands may miss something; see FindOdd.
  struct OddTitle {
    std::uint32_t row;
    std::string lower;
  };
  const std::vector<OddTitle>& OddTitles() const { return odd_; }

 private:
  // Looks for odd titles from this place of the text on.
  void NoteOddTitles(size_t from);
  void NoteOddTitle(size_t row);
  void ClearSlack();

  MailRows rows_;
  std::vector<OddTitle> odd_;  // ascending
};

}  // namespace brindle
