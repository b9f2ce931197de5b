// The program's entry: reads the command line, opens the window and runs until it is closed.

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <cstdio>
#include <optional>
#include <string_view>

#include "app/program.h"
#include "irc/irc_address.h"
#include "platform/console.h"
#include "platform/desktop_scheme_native.h"
#include "platform/end_signals.h"
#include "platform/native.h"
#include "settings/data_folder.h"
#include "settings/options.h"
#include "settings/product.h"
#include "settings/settings_text.h"
#include "ui/dialogs_qt.h"
#include "ui/look.h"

namespace {

constexpr int kWrongUse = 2;  // exit code

constexpr char kHelp[] =
    "Usage: brindle [--data-dir DIR] [ADDRESS | LIST]\n"
    "Gets mails from the mail servers in IRC rooms.\n"
    "\n"
    "  ADDRESS         irc://HOST[:PORT]/ROOM: connect there and enter the room; ircs: by TLS\n"
    "  LIST            the list file to load\n"
    "  --data-dir DIR  keep settings and lists in DIR; it is made when missing\n"
    "  --help          show this text\n"
    "  --version       show the version\n"
    "\n"
    "Without --data-dir they lie beside the program where that is possible, else in the\n"
    "user's configuration folder.\n";

// What needs no display is answered before the toolkit starts: the exit code, if the program is to
// end with it. Options with one hyphen may be the toolkit's own, which it takes away itself.
std::optional<int> AnsweredWithoutDisplay(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    const std::string_view argument = argv[i];
    if (argument == "--help" || argument == "-h") {
      std::fputs(kHelp, stdout);
      return 0;
    }
    if (argument == "--version") {
      std::puts(brindle::VersionText().c_str());
      return 0;
    }
    if (argument == "--data-dir") {
      ++i;
    } else if (argument.starts_with("--") && !argument.starts_with("--data-dir=")) {
      std::fprintf(stderr, "Unknown option '%s'.\n%s", argv[i], kHelp);
      return kWrongUse;
    }
  }
  return std::nullopt;
}

std::string FolderFor(const QString& chosen) {
  const QString program = QCoreApplication::applicationDirPath();
  brindle::FolderFacts facts;
  facts.chosen = chosen.toStdString();
  facts.program = program.toStdString();
  facts.programIsWritable = brindle::IsWritableFolder(facts.program);
  facts.programHasSettings = QFileInfo::exists(QDir(program).filePath(brindle::kSettingsName));
  facts.user = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation).toStdString();
  // In full, as the user is to read it in messages.
  const QString folder = QDir(QString::fromStdString(brindle::DataFolder(facts))).absolutePath();
  return QDir::toNativeSeparators(folder).toStdString();
}

// Read before all else, so that the first window has the right colours from its beginning.
brindle::ThemeChoice StoredTheme(const std::string& folder) {
  const brindle::NativeFiles files;
  const std::optional<std::string> bytes = files.Read(brindle::PathsIn(folder).settings);
  return brindle::ReadOptions(brindle::SettingsText(bytes.value_or(""))).theme;
}

// A list file is named in full, because a program that runs already may be in another folder.
std::string StartedWith(const QString& argument) {
  const bool isFile = !argument.isEmpty() && !brindle::LooksLikeIrcAddress(argument.toStdString());
  return (isFile ? QFileInfo(argument).absoluteFilePath() : argument).toStdString();
}

}  // namespace

int main(int argc, char** argv) {
  brindle::UseCallersConsole();
  if (const std::optional<int> code = AnsweredWithoutDisplay(argc, argv)) return *code;
  QApplication application(argc, argv);
  QCoreApplication::setApplicationName("Brindle");

  QCommandLineParser line;
  const QCommandLineOption dataDir("data-dir", {}, "dir");
  line.addOption(dataDir);
  const bool understood = line.parse(QCoreApplication::arguments());
  const QStringList given = line.positionalArguments();
  if (!understood || given.size() > 1) {
    std::fprintf(stderr, "%s\n%s", qPrintable(line.errorText()), kHelp);
    return kWrongUse;
  }
  const std::string folder = FolderFor(line.value(dataDir));
  if (!QDir().mkpath(QString::fromStdString(folder))) {
    std::fprintf(stderr, "Cannot make the folder %s.\n", folder.c_str());
    return 1;
  }
  brindle::ApplyLook(application, StoredTheme(folder));
  brindle::WatchDesktopScheme(application, &brindle::SetDesktopScheme);
  brindle::QtDialogs dialogs;
  brindle::Program program(folder, dialogs, StartedWith(given.value(0)));
  if (!program.Open()) return program.IsHandedOver() ? 0 : 1;
  // Asked to end from outside, the program ends as if its window had been closed.
  brindle::OnEndSignal([&program] {
    program.Window().close();
    QApplication::quit();
  });
  QObject::connect(&application, &QGuiApplication::commitDataRequest, &program.Window(),
                   [&program] { program.Close(); });
  const int code = QApplication::exec();
  program.Close();
  if (program.HasSaved()) return code;
  std::fprintf(stderr, "Not everything could be saved in %s.\n", folder.c_str());
  return 1;
}
