#pragma once
// The update folder on disk. A file is written under a temporary name beside its own, and renamed
// when it is whole and on the disk.

#include <QDir>
#include <QSaveFile>
#include <memory>

#include "update/update_folder.h"

namespace brindle {

class QtUpdateFolder : public UpdateFolder {
 public:
  // The folder named "update" in `dataFolder`.
  explicit QtUpdateFolder(const std::string& dataFolder);

  void Prepare() override;
  void Remove(const std::string& name) override;
  bool Open(const std::string& name) override;
  bool Write(std::string_view bytes) override;
  bool Commit() override;
  void Discard() override { file_.reset(); }
  std::optional<std::string> Read(const std::string& name, size_t longest) override;

 private:
  QDir folder_;
  std::unique_ptr<QSaveFile> file_;
};

}  // namespace brindle
