#pragma once
// The update folder on disk. A file is written under a temporary name beside its own, and renamed
// when it is whole and on the disk.

#include <QCryptographicHash>
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
  std::string Sha256() const override { return hash_.result().toHex().toStdString(); }
  bool Commit() override;
  void Discard() override { file_.reset(); }
  std::string PathOf(const std::string& name) const override;
  std::optional<std::string> Read(const std::string& name, size_t longest) override;

 private:
  QDir folder_;
  std::unique_ptr<QSaveFile> file_;
  QCryptographicHash hash_{QCryptographicHash::Sha256};  // of what went into file_
};

}  // namespace brindle
