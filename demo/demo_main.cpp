// Shows Brindle's main job on a stage of its own: opens the program for the user to try, or plays
// the tour by itself.

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <cstdio>

#include "stage.h"
#include "support/child_process.h"
#include "tour.h"
#include "ui/look.h"

namespace {

using brindle::demo::Stage;
using brindle::demo::Tour;

constexpr int kTourAnnounceSeconds = 2;
constexpr int kUserAnnounceSeconds = 45;
constexpr int kLeastMillisecondsApart = 200;
constexpr int kDeliveryMilliseconds = 50;  // that one line may take longer than another

struct Received {
  qint64 milliseconds;
  QString text;
};

// The bot's transcript: milliseconds, nick and text, separated by tabs.
QList<Received> ReadTranscript(const QString& path) {
  QFile file(path);
  QList<Received> requests;
  if (!file.open(QIODevice::ReadOnly)) return requests;
  for (const QByteArray& line : file.readAll().split('\n')) {
    const QList<QByteArray> parts = line.split('\t');
    if (parts.size() == 3) requests << Received{parts[0].toLongLong(), QString(parts[2])};
  }
  return requests;
}

// Compares what the bot received with what was asked; false, with a word on it, when they differ.
bool CheckTranscript(const QList<Received>& received, const QStringList& expected) {
  QStringList texts;
  for (const Received& request : received) texts << request.text;
  if (texts != expected) {
    std::fprintf(stderr, "The bot should have received:\n%s\n", qPrintable(expected.join('\n')));
    return false;
  }
  const qint64 span = received.last().milliseconds - received.first().milliseconds;
  if (span < kLeastMillisecondsApart * (received.size() - 1) - kDeliveryMilliseconds) {
    std::fprintf(stderr, "The requests came too fast: %lld ms for %d of them.\n",
                 static_cast<long long>(span), static_cast<int>(received.size()));
    return false;
  }
  return true;
}

int PlayTour(const QDir& folder) {
  const QString transcript = folder.filePath("transcript.txt");
  for (const QString& old : folder.entryList({"*.png", "transcript.txt"}, QDir::Files)) {
    QFile::remove(folder.filePath(old));
  }
  Stage stage(transcript);
  if (!stage.Start(BRINDLE_DEMO_BOT, kTourAnnounceSeconds)) {
    std::fprintf(stderr, "%s\n", qPrintable(stage.Error()));
    return 1;
  }
  Tour tour(stage, folder);
  const bool played = tour.Play();
  const QList<Received> received = ReadTranscript(transcript);
  for (const QString& picture : folder.entryList({"*.png"}, QDir::Files, QDir::Name)) {
    std::printf("%s\n", qPrintable(folder.filePath(picture)));
  }
  std::printf("What the bot received (%s):\n", qPrintable(transcript));
  for (const Received& request : received) {
    std::printf("%8lld ms  %s\n", static_cast<long long>(request.milliseconds),
                qPrintable(request.text));
  }
  if (!played) {
    std::fprintf(stderr, "%s\n", qPrintable(tour.Failure()));
    return 1;
  }
  return CheckTranscript(received, tour.ExpectedLines()) ? 0 : 1;
}

// Opens the program on the stage and waits until the user closes it.
int OpenForUser() {
  const QTemporaryDir folder;
  Stage stage(folder.filePath("transcript.txt"));
  if (!stage.Start(BRINDLE_DEMO_BOT, kUserAnnounceSeconds)) {
    std::fprintf(stderr, "%s\n", qPrintable(stage.Error()));
    return 1;
  }
  const brindle::test::DataFolder visitor(stage.Visitor());
  QProcess program;
  brindle::test::LetEndWithParent(program);
  program.setProcessChannelMode(QProcess::ForwardedChannels);
  QObject::connect(&program, &QProcess::finished, [](int code) { QCoreApplication::exit(code); });
  QObject::connect(&program, &QProcess::errorOccurred, [](QProcess::ProcessError error) {
    if (error == QProcess::FailedToStart) QCoreApplication::exit(1);
  });
  // The file box opens where the program was started.
  program.setWorkingDirectory(stage.ListFolder());
  program.start(BRINDLE_PROGRAM, {"--data-dir", visitor.Path()});
  return QCoreApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  brindle::test::EndWithParent();
  const QStringList arguments = QStringList(argv + 1, argv + argc);
  const bool tour = arguments.size() == 2 && arguments[0] == "--tour";
  if (!tour && !arguments.isEmpty()) {
    std::fprintf(stderr, "Usage: brindle_demo [--tour DIR]\n");
    return 2;
  }
  if (!tour) {
    const QCoreApplication application(argc, argv);
    return OpenForUser();
  }
  const QDir folder(arguments[1]);
  if (!folder.mkpath(".")) {
    std::fprintf(stderr, "Cannot make the folder %s.\n", qPrintable(arguments[1]));
    return 1;
  }
  QApplication application(argc, argv);
  brindle::ApplyLook(application, brindle::ThemeChoice::kSystem);
  return PlayTour(folder);
}
