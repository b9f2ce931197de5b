// The program's entry: reads the command line, opens the window and runs until it is closed.

#include <QApplication>
#include <QCommandLineParser>
#include <cstdio>
#include <string_view>

#include "app/product.h"
#include "program.h"
#include "ui/dialogs_qt.h"

namespace {

constexpr char kHelp[] =
    "Usage: brindle [options]\n"
    "Gets mails from the mail servers in IRC rooms.\n"
    "\n"
    "  --help             show this text\n"
    "  --version          show the version\n"
    "  --nick NAME        fill in the nick\n"
    "  --server HOST:PORT fill in the IRC server\n"
    "  --room ROOM        put a room on the channels list (may be repeated)\n"
    "  --screen-name NAME fill in the AOL screen name\n"
    "  --lists FOLDER     where the file box opens first\n";

// These two need no display, so they are answered before the toolkit starts.
bool AnsweredWithoutDisplay(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    const std::string_view argument = argv[i];
    if (argument == "--help" || argument == "-h") {
      std::fputs(kHelp, stdout);
      return true;
    }
    if (argument == "--version") {
      std::puts(brindle::VersionText().c_str());
      return true;
    }
  }
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  if (AnsweredWithoutDisplay(argc, argv)) return 0;
  const QApplication application(argc, argv);
  QCoreApplication::setApplicationName("Brindle");

  QCommandLineParser line;
  const QCommandLineOption nick("nick", {}, "name");
  const QCommandLineOption server("server", {}, "host:port");
  const QCommandLineOption room("room", {}, "room");
  const QCommandLineOption screenName("screen-name", {}, "name");
  const QCommandLineOption lists("lists", {}, "folder");
  line.addOptions({nick, server, room, screenName, lists});
  if (!line.parse(QCoreApplication::arguments())) {
    std::fprintf(stderr, "%s\n%s", qPrintable(line.errorText()), kHelp);
    return 2;
  }

  brindle::StartState start;
  start.nick = line.value(nick).toStdString();
  start.server = line.value(server).section(':', 0, 0).toStdString();
  start.port = line.value(server).section(':', 1, 1).toStdString();
  start.screenName = line.value(screenName).toStdString();
  for (const QString& name : line.values(room)) start.channels.push_back(name.toStdString());

  brindle::QtDialogs dialogs;
  dialogs.SetFolder(line.value(lists));
  brindle::Program program(start, dialogs);
  program.Window().show();
  return QApplication::exec();
}
