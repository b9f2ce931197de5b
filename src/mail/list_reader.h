#pragma once
// Reads a server's list file into a mail list: in large blocks and one pass, whatever its line ends
// (LF, CR LF, CR, also mixed) and its encoding (UTF-8 or UTF-16 by byte-order mark, else UTF-8 when
// all of the file is valid, else Windows-1252; decided for the whole file).

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "mail/mail_list.h"

namespace brindle {

// Where the bytes come from.
class BlockSource {
 public:
  virtual ~BlockSource() = default;
  // Reads up to `capacity` bytes, at least one; 0 at the end and after a failure.
  virtual size_t Read(char* into, size_t capacity) = 0;
  // True when reading ended for another reason than the end.
  virtual bool Failed() const = 0;
  // Goes back to the first byte.
  virtual void Rewind() = 0;
  // How many bytes there may be; a guess is enough.
  virtual size_t ExpectedSize() const = 0;
};

enum class ReadStatus {
  kComplete,
  kNotOpened,    // no rows
  kFailed,       // the rows before the failure
  kStopped,      // the rows until then
  kOutOfMemory,  // no rows
};

struct ReadResult {
  ReadStatus status = ReadStatus::kComplete;
  std::optional<std::string> handle;  // the server's handle, when a header line named one
};

// Sizes in bytes.
struct ReadLimits {
  size_t block = size_t{64} << 10U;         // stays in the processor's cache while it is worked on
  size_t longestLine = size_t{256} << 20U;  // the rest of a longer line is passed over
  size_t betweenCalls = size_t{16} << 20U;  // read from one call of KeepGoing to the next
};

// Called now and then while reading; may let window events run. False ends the reading.
using KeepGoing = std::function<bool()>;

// Replaces the rows of `list`, which nobody may observe. Never throws; memory that runs out ends
// the reading.
ReadResult ReadList(BlockSource& source, MailList& list, const KeepGoing& keepGoing,
                    const ReadLimits& limits = ReadLimits());

// True when `path` (UTF-8) is a file, and not a folder, a device or nothing at all.
bool IsListFile(const std::string& path);

// The first bytes of the file at `path`, as many as there are; nothing when it cannot be read.
std::optional<std::string> StartOfFile(const std::string& path, size_t bytes);

// ReadList from the file at `path` (UTF-8).
ReadResult ReadListFile(const std::string& path, MailList& list, const KeepGoing& keepGoing);

}  // namespace brindle
