#pragma once
// A second user for tests: a plain IRC client that sends what it is told and keeps every line it
// receives. It answers the server's PING by itself and understands nothing else.

#include <QElapsedTimer>
#include <QTcpSocket>
#include <string>
#include <string_view>
#include <vector>

namespace brindle::test {

class RawClient {
 public:
  struct Line {
    qint64 time;       // milliseconds since the client was made
    std::string text;  // as received, without the line end
  };

  explicit RawClient(const char* nick);

  // Connects and asks to be registered, without waiting for either; several clients can so be
  // registered at the same time.
  void Begin(quint16 port);
  bool WaitForWelcome() { return WaitForLine(" 001 "); }
  // Both of the above.
  bool Connect(quint16 port);

  // Sends one line; the line end is added.
  void Send(std::string_view line);
  // Says `text` in a room or to a nick.
  void Say(std::string_view target, std::string_view text);
  // Joins and waits for the end of the names.
  bool Join(const std::string& room);

  // The present moment as the times of lines are measured.
  qint64 Now() const { return clock_.elapsed(); }
  // What came so far of what `nick` has said, to whom first: "#room :text".
  std::vector<Line> SaidBy(const std::string& nick) const;
  // Waits for a line that contains `part` and comes after the last one that was waited for.
  bool WaitForLine(const std::string& part);

 private:
  void Receive();

  const std::string nick_;
  QElapsedTimer clock_;
  std::vector<Line> lines_;
  size_t next_ = 0;  // where the next wait starts to look
  QTcpSocket socket_;
};

}  // namespace brindle::test
