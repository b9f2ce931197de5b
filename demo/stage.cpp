#include "stage.h"

#include "support/wait.h"

namespace brindle::demo {
namespace {

constexpr int kBotPatienceMilliseconds = 15000;
constexpr int kEndPatienceMilliseconds = 2000;

}  // namespace

Stage::Stage(const QString& transcript) : transcript_(transcript) {}

Stage::~Stage() {
  // So that it says goodbye.
  bot_.Terminate();
  test::WaitUntil([this] { return !bot_.IsRunning(); }, kEndPatienceMilliseconds);
}

bool Stage::Start(const QString& botProgram, int announceSeconds) {
  if (!server_.Start()) {
    error_ = "The IRC server did not start: " + server_.Error();
    return false;
  }
  bot_.Start(botProgram, {"--port", QString::number(Port()), "--room", kRoom, "--handle", kHandle,
                          "--mails", QString::number(kMails), "--list", ListPath(), "--transcript",
                          transcript_, "--announce", QString::number(announceSeconds)});
  QByteArray said;
  const bool ready = test::WaitUntil(
      [&] {
        said += bot_.TakeOutput();
        return said.contains("ready") || !bot_.IsRunning();
      },
      kBotPatienceMilliseconds);
  if (!ready || !bot_.IsRunning()) {
    error_ = "The mail bot did not start: " + QString::fromUtf8(said);
    return false;
  }
  return true;
}

test::StartState Stage::Visitor() const {
  return {kNick, "127.0.0.1:" + std::to_string(Port()), {kRoom}, kScreenName, true};
}

}  // namespace brindle::demo
