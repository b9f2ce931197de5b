#include "mail/request_sender.h"

#include "irc/echo.h"

namespace brindle {

void RequestSender::Send(const std::string& handle, const std::string& screenName,
                         const std::string& what) {
  const std::string said = "!" + handle + " send " + screenName + " " + what;
  queue_.QueueLine(EchoStart(session_, options_, clock_) + said, Kind::kRoom);
  connection_.SendRaw("PRIVMSG " + session_.currentRoom + " :" + said);
}

}  // namespace brindle
