#pragma once
// A program that a test needs beside it, an IRC server or a mail bot, and that ends with the test.
// They are programs of Linux. A test that is a program for Windows, run by Wine, cannot start or
// end them; there a keeper does that, which listens on the loopback port in BRINDLE_KEEPER.

#include <QStringList>
#include <memory>

namespace brindle::test {

class Companion {
 public:
  // A program that root starts may have to be somebody else.
  enum class User { kSame, kNobodyForRoot };

  explicit Companion(User user);
  ~Companion();  // ends it
  Companion(const Companion&) = delete;
  Companion& operator=(const Companion&) = delete;

  // `program` is a full path.
  void Start(const QString& program, const QStringList& arguments);
  bool IsRunning() const;
  // What it has printed since the last call.
  QByteArray TakeOutput();
  // Why it could not be started.
  QString Error() const;
  // Asks it to end.
  void Terminate();
  // Ends it, and returns once it has ended.
  void Kill();

 private:
  struct Process;
  std::unique_ptr<Process> process_;
};

// `path` as a companion reads it.
QString PathForCompanions(const QString& path);

}  // namespace brindle::test
