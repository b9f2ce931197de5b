#pragma once
// What the updater does with files and programs.

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
  // Puts the whole file in place, safe against a crash. False on failure: it is dropped then.
  virtual bool Commit() = 0;
  // Drops the file that was begun, if there is one.
  virtual void Discard() = 0;
  // A whole file; nothing when it is missing or longer than `longest`.
  virtual std::optional<std::string> Read(const std::string& name, size_t longest) = 0;
};

// The SHA-256 of bytes that come piece by piece.
class Sha256 {
 public:
  virtual ~Sha256() = default;
  virtual void Reset() = 0;
  virtual void Add(std::string_view bytes) = 0;
  // 64 lower-case hexadecimal digits.
  virtual std::string Hex() const = 0;
};

class ProgramStarter {
 public:
  virtual ~ProgramStarter() = default;
  // Starts the program of that name, without the system's suffix, from the program's own folder, to
  // live on by itself. Nothing on success, otherwise what went wrong.
  virtual std::optional<std::string> Start(const std::string& name) = 0;
};

}  // namespace brindle
