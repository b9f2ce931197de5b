#include "ui/dialogs_qt.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>

#include "base/text.h"
#include "ui/one_line.h"
#include "ui/qt_text.h"

namespace brindle {
namespace {

QMessageBox::Icon ToQtIcon(Icon icon) {
  switch (icon) {
    case Icon::kExclamation:
      return QMessageBox::Warning;
    case Icon::kCritical:
      return QMessageBox::Critical;
    case Icon::kInformation:
      break;
  }
  return QMessageBox::Information;
}

// The program's texts break lines with CR LF or a CR alone.
QString WithLineFeeds(const std::string& text) {
  return ToQString(text).replace("\r\n", "\n").replace('\r', '\n');
}

// Shows a box with `text` as plain text, so that nothing in it is taken for markup.
int ShowBox(Icon icon, const std::string& text, QMessageBox::StandardButtons buttons) {
  QMessageBox box(ToQtIcon(icon), "Brindle", WithLineFeeds(text), buttons,
                  QApplication::activeWindow());
  box.setTextFormat(Qt::PlainText);
  // Nobody agrees to a danger by a key that was meant for something else.
  if (icon == Icon::kCritical) box.setDefaultButton(QMessageBox::No);
  return box.exec();
}

}  // namespace

void QtDialogs::Notice(Icon icon, const std::string& text) { ShowBox(icon, text, QMessageBox::Ok); }

bool QtDialogs::Question(Icon icon, const std::string& text) {
  return ShowBox(icon, text, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

std::optional<std::string> QtDialogs::Input(const std::string& prompt) {
  bool accepted = false;
  const QString answer =
      QInputDialog::getText(QApplication::activeWindow(), "Brindle", WithLineFeeds(prompt),
                            QLineEdit::Normal, {}, &accepted);
  if (!accepted) return std::nullopt;
  return WithoutControls(answer).toStdString();
}

std::optional<std::string> QtDialogs::OpenFile(const std::string& filter) {
  const QString path = QFileDialog::getOpenFileName(QApplication::activeWindow(), "Open", folder_,
                                                    ToQtFilter(filter));
  if (path.isEmpty()) return std::nullopt;
  folder_ = QFileInfo(path).absolutePath();
  return path.toStdString();
}

std::optional<Colour> QtDialogs::PickColour(Colour current) {
  const QColor picked =
      QColorDialog::getColor(ToQColor(current), QApplication::activeWindow(), "Color");
  if (!picked.isValid()) return std::nullopt;
  return FromQColor(picked);
}

QString ToQtFilter(const std::string& filter) {
  QStringList entries;
  const auto parts = Split(filter, "|");
  for (size_t i = 0; i + 1 < parts.size(); i += 2) {
    const QString patterns = ToQString(TrimBlanks(parts[i + 1])).replace(';', ' ');
    // The toolkit shows what stands before the patterns, so a description that already names them
    // in parentheses keeps only its words.
    const QString words = ToQString(parts[i]).section('(', 0, 0).trimmed();
    entries << words + " (" + patterns + ")";
  }
  return entries.join(";;");
}

}  // namespace brindle
