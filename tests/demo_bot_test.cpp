// The demo bot over a real IRC server, asked by a user as the client would ask it.

#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "support/irc_server.h"
#include "support/raw_client.h"
#include "support/wait.h"

namespace brindle::test {
namespace {

constexpr const char* kRoom = "#mailroom";

QStringList ReadLines(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  QStringList lines = QString::fromUtf8(file.readAll()).split('\n');
  if (lines.last().isEmpty()) lines.removeLast();
  return lines;
}

class DemoBotTest : public testing::Test {
 protected:
  void SetUp() override {
    if (!IrcServer::IsInstalled(IrcServer::Kind::kNgircd)) GTEST_SKIP();
    ASSERT_TRUE(server_.Start()) << server_.Error().toStdString();
    ASSERT_TRUE(user_.Connect(server_.Port()));
    ASSERT_TRUE(user_.Join(kRoom));
    bot_.start(BRINDLE_DEMO_BOT,
               {"--port", QString::number(server_.Port()), "--room", kRoom, "--mails", "40",
                "--list", list_, "--transcript", transcript_, "--announce", "0.3", "--until-eof"});
    ASSERT_TRUE(user_.WaitForLine(":MailBot!"));
  }

  void TearDown() override {
    bot_.kill();
    bot_.waitForFinished();
  }

  // What the bot answers to a text said in the room; empty when it does not.
  std::string Ask(const std::string& text) {
    user_.Say(kRoom, text);
    const auto answer = user_.WaitForLine(" NOTICE Anna :");
    return answer ? answer->text.substr(answer->text.find(" :") + 2) : "";
  }

  bool HasEnded(int expectedCode) {
    return WaitUntil([this] { return bot_.state() == QProcess::NotRunning; }, 5000) &&
           bot_.exitStatus() == QProcess::NormalExit && bot_.exitCode() == expectedCode;
  }

  QTemporaryDir folder_;
  const QString list_ = folder_.filePath("list.txt");
  const QString transcript_ = folder_.filePath("transcript.txt");
  IrcServer server_{IrcServer::Kind::kNgircd};
  RawClient user_{"Anna"};
  QProcess bot_;
};

TEST_F(DemoBotTest, AnswersAndKeepsATranscript) {
  const QStringList list = ReadLines(list_);
  const auto title = [&list](int number) {
    const QString start = QString::number(number) + ". ";
    for (const QString& line : list) {
      if (line.startsWith(start)) return line.mid(start.size()).toStdString();
    }
    return std::string("(not in the list)");
  };
  const std::string range = "There is no such mail. Please ask for a number from 1 to 40, ";
  const std::string code = Ask("!MailBot send My Name accesscode").substr(31);
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"!MAILBOT send myname 7", "Mail 7 \"" + title(7) + "\" is on the way to myname"},
      {"!mailbot Send My Name 3-5",
       "3 mails are on the way to My Name: 3 \"" + title(3) + "\" to 5 \"" + title(5) + "\""},
      {"!MailBot send myname 41", range},
      {"!MailBot send myname 0", range},
      {"!MailBot send myname 5-3", range},
      {"!MailBot send myname 3-41", range},
      {"!MailBot send myname -3", range},
      {"!MailBot send myname 7x", range},
      {"!MailBot send myname status", "Requests served: 2, mails sent: 4, up for 0m "},
      {"!MailBot send myname list", "The list of 40 mails is in " + list_.toStdString()},
      {"!MailBot verify myname " + code, "The access code " + code + " is valid for myname"},
      {"!MailBot verify other " + code, "The access code " + code + " is invalid for other"},
      {"!MailBot verify  " + code, "The access code " + code + " is invalid for nobody"},
      {"!MailBot hello", "I did not understand that."},
  };
  for (const auto& [question, answer] : cases) {
    const std::string said = Ask(question);
    EXPECT_TRUE(said.starts_with(answer)) << question << "\n  " << said << "\n  " << answer;
  }
  user_.Say(kRoom, "!MailBots send myname 7");
  user_.Say(kRoom, "talk about !MailBot send myname 7");
  EXPECT_NE(Ask("!MailBot send last 1").find(" last"), std::string::npos);

  const QStringList transcript = ReadLines(transcript_);
  ASSERT_EQ(transcript.size(), static_cast<qsizetype>(cases.size() + 2));
  for (size_t i = 0; i < cases.size(); ++i) {
    const QStringList fields = transcript[static_cast<qsizetype>(i) + 1].split('\t');
    ASSERT_EQ(fields.size(), 3);
    EXPECT_GE(fields[0].toInt(), transcript[static_cast<qsizetype>(i)].split('\t')[0].toInt());
    EXPECT_EQ(fields[1], "Anna");
    EXPECT_EQ(fields[2].toStdString(), cases[i].first);
  }
}

TEST_F(DemoBotTest, ListNamesTheBotEarlyAndNumbersEveryMail) {
  EXPECT_TRUE(WaitUntil([this] { return bot_.bytesAvailable() >= 6; }, 5000));
  EXPECT_EQ(bot_.readAllStandardOutput(), "ready\n");
  const QStringList lines = ReadLines(list_);
  bool named = false;
  int mails = 0;
  for (qsizetype i = 0; i < lines.size(); ++i) {
    if (i < 12) named |= lines[i].startsWith("!MailBot send <your screen name> ");
    const auto row = QRegularExpression("^(\\d+)\\. \\S.*$").match(lines[i]);
    if (!row.hasMatch()) continue;
    EXPECT_EQ(row.captured(1).toInt(), ++mails);
  }
  EXPECT_TRUE(named);
  EXPECT_EQ(mails, 40);
}

TEST_F(DemoBotTest, AnnouncesItselfInBothFormsAndInColour) {
  for (const char* form : {"!MailBot send <", "/notice MailBot send <", "!MailBot send <"}) {
    const auto line = user_.WaitForLine(form);
    ASSERT_TRUE(line) << form;
    EXPECT_NE(line->text.find('\x03'), std::string::npos);
  }
}

TEST_F(DemoBotTest, NeverSendsFasterThanTenLinesASecond) {
  constexpr int kCount = 15;
  QElapsedTimer sinceAsked;
  sinceAsked.start();
  for (int i = 1; i <= kCount; ++i) user_.Say(kRoom, "!MailBot send myname " + std::to_string(i));
  for (int i = 1; i <= kCount; ++i) {
    ASSERT_TRUE(user_.WaitForLine("Mail " + std::to_string(i) + " ")) << i;
  }
  EXPECT_GE(sinceAsked.elapsed(), (kCount - 1) * 100);
}

TEST_F(DemoBotTest, EndsWhenAskedAndWithTheServer) {
  bot_.closeWriteChannel();
  EXPECT_TRUE(user_.WaitForLine("QUIT :\"Closing the mail room\""));
  EXPECT_TRUE(HasEnded(0));

  const QStringList arguments = {"--port", QString::number(server_.Port()), "--room", kRoom};
  bot_.start(BRINDLE_DEMO_BOT, arguments);
  ASSERT_TRUE(user_.WaitForLine(":MailBot!"));
  bot_.terminate();
  EXPECT_TRUE(user_.WaitForLine("QUIT :\"Closing the mail room\""));
  EXPECT_TRUE(HasEnded(0));

  bot_.start(BRINDLE_DEMO_BOT, arguments);
  ASSERT_TRUE(user_.WaitForLine(":MailBot!"));
  EXPECT_TRUE(server_.Stop());
  EXPECT_TRUE(HasEnded(0));
}

}  // namespace
}  // namespace brindle::test
