#include "platform/program_starter_qt.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>

namespace brindle {
namespace {

#ifdef Q_OS_WIN
constexpr char kSuffix[] = ".exe";
#else
constexpr char kSuffix[] = "";
#endif

}  // namespace

std::optional<std::string> QtProgramStarter::Start(const std::string& name) {
  const QString folder = QCoreApplication::applicationDirPath();
  const QString path = folder + "/" + QString::fromStdString(name) + kSuffix;
  if (!QFileInfo::exists(path)) return "File not found: " + path.toStdString();
  QProcess program;
  program.setProgram(path);
  program.setWorkingDirectory(folder);
  if (program.startDetached()) return std::nullopt;
  return "Could not be started: " + path.toStdString();
}

}  // namespace brindle
