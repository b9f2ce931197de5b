#include "mail/list_reader.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string_view>

#include "base/encoding.h"
#include "base/utf8.h"
#include "mail/byte_kernels.h"
#include "mail/line_cutter.h"
#include "mail/list_parser.h"

namespace brindle {
namespace {

// More than this is not set aside for titles on the word of a file's size.
constexpr size_t kMostReserved = size_t{256} << 20U;

enum class Mark { kNone, kUtf8, kUtf16Little, kUtf16Big };

Mark MarkOf(std::string_view start) {
  if (start.starts_with(kUtf8Mark)) return Mark::kUtf8;
  if (start.starts_with("\xFF\xFE")) return Mark::kUtf16Little;
  if (start.starts_with("\xFE\xFF")) return Mark::kUtf16Big;
  return Mark::kNone;
}

size_t SizeOf(Mark mark) {
  return mark == Mark::kNone ? 0 : mark == Mark::kUtf8 ? kUtf8Mark.size() : 2;
}

// Tells while the blocks go by whether all of them together are valid UTF-8.
class Utf8Check {
 public:
  // False as soon as a sequence cannot become valid any more, or a little later.
  bool Accept(std::string_view block) {
    if (tail_.empty() && Kernels().isAscii(block.data(), block.size())) return true;
    for (; !tail_.empty() && !block.empty(); block.remove_prefix(1)) {
      tail_ += block.front();
      if (IsValidUtf8(tail_)) {
        tail_.clear();
      } else if (tail_.size() > kLongestTail) {
        return false;
      }
    }
    const std::string_view rest = block.substr(ValidUtf8Prefix(block));
    if (rest.size() > kLongestTail) return false;
    tail_ += rest;
    return true;
  }

  bool Finish() const { return tail_.empty(); }

 private:
  static constexpr size_t kLongestTail = 3;
  std::string tail_;  // a character that the end of the last block has cut, perhaps
};

// One reading of one source, from a first guess of the encoding to the end.
class Reading {
 public:
  Reading(BlockSource& source, const KeepGoing& keepGoing, const ReadLimits& limits)
      : source_(source), keepGoing_(keepGoing), limits_(limits) {}

  ReadStatus Run() {
    std::optional<ReadStatus> end = Pass(LineEncoding::kUtf8);
    if (!end) {
      // Not valid UTF-8 after all: everything is read again in the other encoding.
      end = Pass(mark_ == Mark::kUtf8 ? LineEncoding::kRepairedUtf8 : LineEncoding::kWindows1252);
    }
    texts_->GiveBackMemory();
    return end.value_or(ReadStatus::kFailed);
  }

  std::shared_ptr<const MailTexts> Texts() const { return texts_; }

  std::optional<std::string> Handle() const {
    return parser_ ? parser_->Handle() : std::optional<std::string>();
  }

 private:
  // Reads the source from its start to its end; nothing when it is not in this encoding.
  std::optional<ReadStatus> Pass(LineEncoding encoding) {
    source_.Rewind();
    texts_ = std::make_shared<MailTexts>();
    texts_->ReserveFor(std::min(source_.ExpectedSize(), kMostReserved));
    parser_.emplace(*texts_, encoding);
    cutter_.emplace(limits_.longestLine);
    utf16_.clear();
    check_ = encoding == LineEncoding::kUtf8 ? std::optional(Utf8Check()) : std::nullopt;
    const auto take = [this](std::string_view line) { parser_->Line(line); };

    size_t sinceCall = ReadMark();
    size_t read = sinceCall;
    while (read > 0) {
      read = ReadBlock();
      if (!valid_) return std::nullopt;
      cutter_->Cut(take);
      texts_->Settle();
      sinceCall += read;
      if (sinceCall < limits_.betweenCalls || read == 0) continue;
      sinceCall = 0;
      if (keepGoing_ && !keepGoing_()) return ReadStatus::kStopped;
    }
    if (check_ && !check_->Finish()) return std::nullopt;
    cutter_->Finish(take);
    texts_->Settle();
    return source_.Failed() ? ReadStatus::kFailed : ReadStatus::kComplete;
  }

  // Reads the first bytes and looks for a byte-order mark; returns how many were read.
  size_t ReadMark() {
    constexpr size_t kLongestMark = 3;
    char start[kLongestMark];
    size_t size = 0;
    while (size < kLongestMark) {
      const size_t read = source_.Read(start + size, kLongestMark - size);
      if (read == 0) break;
      size += read;
    }
    mark_ = MarkOf(std::string_view(start, size));
    Take(std::string_view(start, size).substr(SizeOf(mark_)));
    return size;
  }

  // Hands the next block to the cutter; returns how many bytes were read, 0 at the end.
  size_t ReadBlock() {
    if (IsUtf16()) return ReadUtf16Block();
    char* room = cutter_->Room(limits_.block);
    const size_t read = source_.Read(room, limits_.block);
    valid_ = !check_ || check_->Accept(std::string_view(room, read));
    cutter_->Added(read);
    return read;
  }

  size_t ReadUtf16Block() {
    const size_t before = utf16_.size();
    utf16_.resize(before + limits_.block);
    const size_t read = source_.Read(utf16_.data() + before, limits_.block);
    utf16_.resize(before + read);
    // An odd byte and the first half of a pair wait for the next block, or for the end.
    const size_t whole = read == 0 ? utf16_.size() : WholeCharacters();
    const auto order =
        mark_ == Mark::kUtf16Little ? ByteOrder::kLittleEndian : ByteOrder::kBigEndian;
    AddText(Utf8FromUtf16(std::string_view(utf16_).substr(0, whole), order));
    utf16_.erase(0, whole);
    return read;
  }

  // The length of utf16_ without a character that its end has cut.
  size_t WholeCharacters() const {
    const size_t even = utf16_.size() / 2 * 2;
    if (even == 0) return 0;
    const char high = utf16_[mark_ == Mark::kUtf16Little ? even - 1 : even - 2];
    const bool opensPair = (static_cast<unsigned char>(high) & 0xFCU) == 0xD8U;
    return opensPair ? even - 2 : even;
  }

  void Take(std::string_view bytes) {
    valid_ = true;
    if (IsUtf16()) {
      utf16_ = bytes;
      return;
    }
    valid_ = !check_ || check_->Accept(bytes);
    AddText(bytes);
  }

  void AddText(std::string_view text) {
    text.copy(cutter_->Room(text.size()), text.size());
    cutter_->Added(text.size());
  }

  bool IsUtf16() const { return mark_ == Mark::kUtf16Little || mark_ == Mark::kUtf16Big; }

  BlockSource& source_;
  const KeepGoing& keepGoing_;
  ReadLimits limits_;
  Mark mark_ = Mark::kNone;
  std::shared_ptr<MailTexts> texts_;
  std::optional<ListParser> parser_;
  std::optional<LineCutter> cutter_;
  std::optional<Utf8Check> check_;
  bool valid_ = true;
  std::string utf16_;  // read and not decoded yet
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
    list.SetTexts(reading.Texts());
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
