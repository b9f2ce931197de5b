#pragma once
// What the updater does with files.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace brindle {

// The folder "update". A file that is being written is not there under its name until it is whole.
class UpdateFolder {
 public:
  virtual ~UpdateFolder() = default;
  // Makes the folder and removes what an interrupted run left behind; errors are ignored.
  virtual void Prepare() = 0;
  // Removes a file; errors are ignored, a missing one included.
  virtual void Remove(const std::string& name) = 0;
  // Begins a file; one that was begun and not committed is dropped. False on failure.
  virtual bool Open(const std::string& name) = 0;
  virtual bool Write(std::string_view bytes) = 0;
  // The SHA-256 of what has been written to it: 64 lower-case hexadecimal digits.
  virtual std::string Sha256() const = 0;
  // Puts the whole file in place, safe against a crash. False on failure: it is dropped then.
  virtual bool Commit() = 0;
  // Drops the file that was begun, if there is one.
  virtual void Discard() = 0;
  // Where the file of that name is found, in full and as the system writes paths.
  virtual std::string PathOf(const std::string& name) const = 0;
  // A whole file; nothing when it is missing or longer than `longest`.
  virtual std::optional<std::string> Read(const std::string& name, size_t longest) = 0;
};

}  // namespace brindle
