#pragma once
// The machine's own files.

#include <string>

#include "base/files.h"

namespace brindle {

// Paths are UTF-8. Replace writes "<path>.new" in the same folder first; two programs that replace
// the same file at the same moment never mix: one of them fails.
class NativeFiles : public Files {
 public:
  std::optional<std::string> Read(const std::string& path) const override;
  bool Replace(const std::string& path, std::string_view content) override;
  bool Remove(const std::string& path) override;
  bool FileExists(const std::string& path) const override;
};

// True when files can be created in `folder`.
bool IsWritableFolder(const std::string& folder);

}  // namespace brindle
