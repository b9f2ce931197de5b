#pragma once
// The stage for trying Brindle without the outside world: an IRC server on a free loopback port and
// a mail bot in its room, both gone when the stage is.

#include <QString>
#include <QTemporaryDir>

#include "support/companion.h"
#include "support/data_folder.h"
#include "support/irc_server.h"

namespace brindle::demo {

class Stage {
 public:
  static constexpr const char* kRoom = "#mailroom";
  static constexpr const char* kHandle = "MailBot";
  static constexpr int kMails = 500;
  static constexpr const char* kNick = "visitor";
  static constexpr const char* kScreenName = "mailfan";

  // `transcript` is the file for the requests that the bot receives.
  explicit Stage(const QString& transcript);
  ~Stage();

  // False after a bounded time when something did not start; Error() says what.
  bool Start(const QString& botProgram, int announceSeconds);
  const QString& Error() const { return error_; }

  quint16 Port() const { return server_.Port(); }
  // What a visitor of this stage has set up.
  test::StartState Visitor() const;
  // The bot's list file, and the folder that holds nothing else.
  QString ListPath() const { return lists_.filePath("MailBot list.txt"); }
  QString ListFolder() const { return lists_.path(); }

 private:
  test::IrcServer server_{test::IrcServer::Kind::kNgircd};
  QTemporaryDir lists_;
  QString transcript_;
  test::Companion bot_{test::Companion::User::kSame};
  QString error_;
};

}  // namespace brindle::demo
