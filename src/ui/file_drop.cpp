#include "ui/file_drop.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

namespace brindle {
namespace {

// The one local file that is being dragged; empty when it is anything else.
QString FileIn(const QMimeData& dragged) {
  const QList<QUrl> urls = dragged.urls();
  return urls.size() == 1 ? urls.first().toLocalFile() : QString();
}

}  // namespace

FileDrop::FileDrop(QWidget& window, std::function<void(const QString& path)> take)
    : QObject(&window), take_(std::move(take)) {
  window.setAcceptDrops(true);
  window.installEventFilter(this);
}

bool FileDrop::eventFilter(QObject* watched, QEvent* event) {
  const bool dropped = event->type() == QEvent::Drop;
  if (!dropped && event->type() != QEvent::DragEnter) return QObject::eventFilter(watched, event);
  auto* drop = static_cast<QDropEvent*>(event);
  const QString file = FileIn(*drop->mimeData());
  if (file.isEmpty()) return false;
  drop->acceptProposedAction();
  // Loading lets events run, and the program that the file comes from waits for this one to end.
  if (dropped)
    QMetaObject::invokeMethod(
        this, [this, file] { take_(file); }, Qt::QueuedConnection);
  return true;
}

}  // namespace brindle
