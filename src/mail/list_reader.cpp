#include "mail/list_reader.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string_view>
#include <utility>

#include "base/encoding.h"
#include "base/utf8.h"
#include "mail/list_parser.h"

namespace brindle {
namespace {

// More than this is not set aside on the word of a file's size.
constexpr size_t kMostReserved = size_t{256} << 20U;

enum class Encoding { kUtf8, kRepairedUtf8, kUtf16Little, kUtf16Big, kWindows1252 };

// What a file with this beginning is read as first, and the length of its byte-order mark.
std::pair<Encoding, size_t> EncodingOf(std::string_view start) {
  if (start.starts_with("\xFF\xFE")) return {Encoding::kUtf16Little, 2};
  if (start.starts_with("\xFE\xFF")) return {Encoding::kUtf16Big, 2};
  return {Encoding::kUtf8, start.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0};
}

// Each broken byte is read as U+FFFD.
std::string RepairUtf8(std::string_view bytes) {
  std::string text;
  while (!bytes.empty()) {
    const size_t valid = ValidUtf8Prefix(bytes);
    text += bytes.substr(0, valid);
    if (valid < bytes.size()) text += "\uFFFD";
    bytes.remove_prefix(std::min(valid + 1, bytes.size()));
  }
  return text;
}

void AppendDecoded(std::string_view bytes, Encoding encoding, FlatArray<char>& to) {
  if (encoding == Encoding::kWindows1252) {
    to.MakeRoom(RoomForWindows1252(bytes.size()));
    char* const end = to.Data() + to.Size();
    to.Added(static_cast<size_t>(Utf8FromWindows1252(bytes, end) - end));
    return;
  }
  const std::string text =
      encoding == Encoding::kRepairedUtf8
          ? RepairUtf8(bytes)
          : Utf8FromUtf16(bytes, encoding == Encoding::kUtf16Big ? ByteOrder::kBigEndian
                                                                 : ByteOrder::kLittleEndian);
  to.Append(text.data(), text.size());
}

// A length of `bytes` that ends between two characters, or near to where they end.
size_t WholeCharacters(std::string_view bytes, Encoding encoding) {
  if (encoding == Encoding::kWindows1252 || bytes.empty()) return bytes.size();
  if (encoding == Encoding::kRepairedUtf8) {
    // Three bytes that continue a character end it, whatever came before.
    constexpr size_t kMostTrails = 3;
    for (size_t back = 1; back <= std::min(bytes.size(), kMostTrails); ++back) {
      if (!IsTrailByte(bytes[bytes.size() - back])) return bytes.size() - back;
    }
    return bytes.size();
  }
  const size_t even = bytes.size() / 2 * 2;
  if (even == 0) return 0;
  const char high = bytes[encoding == Encoding::kUtf16Little ? even - 1 : even - 2];
  const bool opensPair = (static_cast<unsigned char>(high) & 0xFCU) == 0xD8U;
  return opensPair ? even - 2 : even;
}

// One reading of one source, from a first guess of the encoding to the end.
class Reading {
 public:
  Reading(BlockSource& source, const KeepGoing& keepGoing, const ReadLimits& limits)
      : source_(source), keepGoing_(keepGoing), limits_(limits) {}

  ReadStatus Run() {
    const auto [encoding, mark] = ReadStart();
    if (const std::optional<ReadStatus> end = Pass(encoding)) return *end;
    // Not valid UTF-8 after all: everything is read again in the other encoding.
    ReadStart();
    return *Pass(mark > 0 ? Encoding::kRepairedUtf8 : Encoding::kWindows1252);
  }

  MailRows& Rows() { return rows_; }

  std::optional<std::string> Handle() const {
    return parser_ ? parser_->Handle() : std::optional<std::string>();
  }

 private:
  // Reads the first bytes: what stands behind a byte-order mark waits in raw_.
  std::pair<Encoding, size_t> ReadStart() {
    constexpr size_t kLongestMark = 3;
    source_.Rewind();
    raw_.clear();
    while (raw_.size() < kLongestMark && ReadRaw(kLongestMark - raw_.size()) > 0) {
    }
    const auto start = EncodingOf(raw_);
    raw_.erase(0, start.second);
    return start;
  }

  // Reads the source to its end; nothing when it is not in this encoding.
  std::optional<ReadStatus> Pass(Encoding encoding) {
    rows_ = MailRows();
    // With room for the last attempt to read. What is not needed is never written and costs
    // nothing.
    rows_.text.Reserve(std::min(source_.ExpectedSize(), kMostReserved) + limits_.block +
                       MailTexts::kSlack);
    parser_.emplace(rows_, limits_.longestLine);
    Utf8Check check;
    size_t sinceCall = 0;
    size_t read = 1;
    while (read > 0 && HasRoom()) {
      const size_t before = rows_.text.Size();
      read = encoding == Encoding::kUtf8 ? ReadPlain() : ReadAndDecode(encoding);
      const std::string_view added(rows_.text.Data() + before, rows_.text.Size() - before);
      if (encoding == Encoding::kUtf8 && !check.Accept(added)) return {};
      parser_->Parse();
      sinceCall += read;
      if (sinceCall < limits_.betweenCalls || read == 0) continue;
      sinceCall = 0;
      if (keepGoing_ && !keepGoing_()) return ReadStatus::kStopped;
    }
    if (!check.Complete()) return {};
    parser_->Finish();
    if (encoding == Encoding::kUtf8) rows_.leads = check.Leads();
    if (encoding == Encoding::kWindows1252) rows_.leads = 0;  // none of its characters is odd
    return source_.Failed() ? ReadStatus::kFailed : ReadStatus::kComplete;
  }

  // False when the list is full; the rest of the file is passed over.
  bool HasRoom() const {
    constexpr size_t kLongestCharacter = 3;  // that one byte can become
    return MailTexts::kMostText - rows_.text.Size() > (limits_.block + 4) * kLongestCharacter;
  }

  // Both read the next block, and append it to the text; they return how many bytes were read, 0 at
  // the end.
  size_t ReadPlain() {
    rows_.text.Append(raw_.data(), raw_.size());
    raw_.clear();
    rows_.text.MakeRoom(limits_.block);
    const size_t read = source_.Read(rows_.text.Data() + rows_.text.Size(), limits_.block);
    rows_.text.Added(read);
    return read;
  }

  size_t ReadAndDecode(Encoding encoding) {
    const size_t read = ReadRaw(limits_.block);
    const size_t whole = read == 0 ? raw_.size() : WholeCharacters(raw_, encoding);
    AppendDecoded(std::string_view(raw_).substr(0, whole), encoding, rows_.text);
    raw_.erase(0, whole);
    return read;
  }

  size_t ReadRaw(size_t bytes) {
    const size_t before = raw_.size();
    raw_.resize(before + bytes);
    const size_t read = source_.Read(raw_.data() + before, bytes);
    raw_.resize(before + read);
    return read;
  }

  BlockSource& source_;
  const KeepGoing& keepGoing_;
  ReadLimits limits_;
  MailRows rows_;
  std::optional<ListParser> parser_;
  std::string raw_;  // read and not decoded yet
};

// Blocks of a file. The stream's own buffer is switched off: a block goes straight to its place.
class FileSource : public BlockSource {
 public:
  explicit FileSource(const std::filesystem::path& path) {
    file_.rdbuf()->pubsetbuf(nullptr, 0);
    file_.open(path, std::ios::in | std::ios::binary);
    std::error_code ignored;  // the size is a hint
    const auto size = std::filesystem::file_size(path, ignored);
    if (!ignored) size_ = static_cast<size_t>(size);
  }

  bool IsOpen() const { return file_.is_open(); }

  size_t Read(char* into, size_t capacity) override {
    if (!file_.good()) return 0;
#ifdef _WIN32
    // Fresh pages are written before they are read into: Wine looks at them first, and a page that
    // was looked at costs as much again when it is written.
    constexpr size_t kPage = 4096;
    for (size_t at = 0; at < capacity; at += kPage) into[at] = 0;
#endif
    file_.read(into, static_cast<std::streamsize>(capacity));
    const auto size = static_cast<size_t>(file_.gcount());
    read_ += size;
    return size;
  }

  // An end before the end that was there: somebody has cut the file meanwhile.
  bool Failed() const override { return file_.bad() || (file_.eof() && read_ < size_); }

  void Rewind() override {
    file_.clear();
    file_.seekg(0);
    read_ = 0;
  }

  size_t ExpectedSize() const override { return size_; }

 private:
  std::ifstream file_;
  size_t size_ = 0;  // when it was opened
  size_t read_ = 0;
};

std::filesystem::path PathFrom(const std::string& utf8) {
  return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

}  // namespace

ReadResult ReadList(BlockSource& source, MailList& list, const KeepGoing& keepGoing,
                    const ReadLimits& limits) {
  list.Clear();
  Reading reading(source, keepGoing, limits);
  ReadResult result;
  try {
    result.status = reading.Run();
    result.handle = reading.Handle();
    list.SetTexts(std::make_shared<const MailTexts>(std::move(reading.Rows())));
  } catch (const std::exception&) {
    // Only memory can run out here, perhaps in the middle of a row.
    list.Clear();
    result = {ReadStatus::kOutOfMemory, std::nullopt};
  }
  return result;
}

bool IsListFile(const std::string& path) {
  try {
    std::error_code error;
    return std::filesystem::is_regular_file(PathFrom(path), error);
  } catch (const std::exception&) {
    return false;  // no text that could name a file
  }
}

std::optional<std::string> StartOfFile(const std::string& path, size_t bytes) {
  try {
    FileSource file(PathFrom(path));
    if (!file.IsOpen()) return std::nullopt;
    std::string start(bytes, '\0');
    start.resize(file.Read(start.data(), bytes));
    if (file.Failed()) return std::nullopt;
    return start;
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

ReadResult ReadListFile(const std::string& path, MailList& list, const KeepGoing& keepGoing) {
  list.Clear();
  try {
    FileSource file(PathFrom(path));
    if (file.IsOpen()) return ReadList(file, list, keepGoing);
  } catch (const std::exception&) {
    // No text that could name a file: the same as a file that cannot be opened.
  }
  return {ReadStatus::kNotOpened, std::nullopt};
}

}  // namespace brindle
