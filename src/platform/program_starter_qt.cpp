#include "platform/program_starter_qt.h"

#include <QDir>
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

std::optional<std::string> StartProgramIn(const std::string& folder, const std::string& name,
                                          const std::string& argument) {
  const QDir place(QString::fromStdString(folder));
  const QString path = place.filePath(QString::fromStdString(name) + kSuffix);
  if (!QFileInfo::exists(path)) return "File not found: " + path.toStdString();
  QProcess program;
  program.setProgram(path);
  program.setArguments({QString::fromStdString(argument)});
  program.setWorkingDirectory(place.path());
  if (program.startDetached()) return std::nullopt;
  return "Could not be started: " + path.toStdString();
}

}  // namespace brindle
