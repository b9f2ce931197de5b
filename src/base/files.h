#pragma once
// The few operations on files that the stored settings and lists need. Behind a seam, so that tests
// can let them fail.

#include <optional>
#include <string>
#include <string_view>

namespace brindle {

class Files {
 public:
  virtual ~Files() = default;

  // The whole file; nothing when it is missing or cannot be read to its end.
  virtual std::optional<std::string> Read(const std::string& path) const = 0;

  // Makes `content` the whole file at `path`, readable by its owner only. Whoever reads the file,
  // even after a crash in the middle of this, finds the old content or the new one, whole. False on
  // failure: the file is then as it was.
  virtual bool Replace(const std::string& path, std::string_view content) = 0;

  // False when there is a file at `path` still. Removing a missing file succeeds.
  virtual bool Remove(const std::string& path) = 0;

  // True for an existing file that is no folder; any error counts as absent.
  virtual bool FileExists(const std::string& path) const = 0;
};

}  // namespace brindle
