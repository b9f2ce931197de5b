#pragma once
// The TCP connection to the IRC server, as the session sees it.

#include <string>
#include <string_view>

namespace brindle {

// What the socket tells. No event comes out of a call of ChatSocket: all are raised by the event
// loop, and none after Close.
class ChatSocketEvents {
 public:
  virtual ~ChatSocketEvents() = default;
  virtual void wsChat_Connect() = 0;
  // One arrival of received text: see ArrivalCutter for what one arrival is.
  virtual void wsChat_DataArrival(std::string_view received) = 0;
  // The connection could not be made or broke.
  virtual void wsChat_Error(const std::string& description) = 0;
  // The other side closed the connection in an orderly way.
  virtual void wsChat_Close() = 0;
};

class ChatSocket {
 public:
  virtual ~ChatSocket() = default;
  // Begins to connect; any earlier connection must have been closed. `port` is 1 to 65535.
  virtual void Connect(const std::string& host, int port) = 0;
  // Drops the connection at once. What was sent before may be lost; no event follows.
  virtual void Close() = 0;
  // Sends the bytes when connected, else does nothing.
  virtual void Send(std::string_view bytes) = 0;
  virtual bool IsConnected() const = 0;
};

}  // namespace brindle
