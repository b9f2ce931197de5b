#pragma once

#include <QCryptographicHash>

#include "update/update_folder.h"

namespace brindle {

class QtSha256 : public Sha256 {
 public:
  void Reset() override { hash_.reset(); }
  void Add(std::string_view bytes) override {
    hash_.addData(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
  }
  std::string Hex() const override { return hash_.result().toHex().toStdString(); }

 private:
  QCryptographicHash hash_{QCryptographicHash::Sha256};
};

}  // namespace brindle
