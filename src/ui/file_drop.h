#pragma once
// Takes a file that is dropped on a window.

#include <QObject>
#include <QWidget>
#include <functional>

namespace brindle {

class FileDrop : public QObject {
  Q_OBJECT

 public:
  // Belongs to `window`. What lies in the window and takes drops itself is asked first.
  FileDrop(QWidget& window, std::function<void(const QString& path)> take);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  std::function<void(const QString& path)> take_;
};

}  // namespace brindle
