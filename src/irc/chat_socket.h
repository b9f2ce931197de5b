#pragma once
// The TCP connection to the IRC server, as the session sees it.

#include <string>
#include <string_view>

#include "settings/connection_options.h"

namespace brindle {

// The way to a server.
struct ChatRoute {
  std::string host;  // a name, or an address without brackets
  int port = 0;      // 1 to 65535
  bool tls = false;
  // With TLS: the fingerprint of a certificate that will do although it cannot be verified.
  std::string trusted = {};
  ConnectionOptions options = {};
};

// A certificate that could not be verified.
struct ServerCertificate {
  std::string subject;
  std::string issuer;
  std::string fault;
  std::string fingerprint;  // SHA-256, "AB:CD:..."
};

// What the socket tells. No event comes out of a call of ChatSocket: all are raised by the event
// loop, and none after Close.
class ChatSocketEvents {
 public:
  virtual ~ChatSocketEvents() = default;
  virtual void wsChat_Connect() = 0;
  // One arrival of received text: see ArrivalCutter for what one arrival is.
  virtual void wsChat_DataArrival(std::string_view received) = 0;
  // The connection could not be made or broke. A description that is a sentence says all.
  virtual void wsChat_Error(const std::string& description) = 0;
  // The server's certificate cannot be verified, so nothing was sent. The connection is closed.
  virtual void wsChat_Untrusted(const ServerCertificate& certificate) = 0;
  // The other side closed the connection in an orderly way.
  virtual void wsChat_Close() = 0;
};

class ChatSocket {
 public:
  virtual ~ChatSocket() = default;
  // Begins to connect; any earlier connection must have been closed.
  virtual void Connect(const ChatRoute& route) = 0;
  // Drops the connection at once. What was sent before may be lost; no event follows.
  virtual void Close() = 0;
  // Sends the bytes when connected, else does nothing.
  virtual void Send(std::string_view bytes) = 0;
  virtual bool IsConnected() const = 0;
  // True while connected by TLS, whose certificate was verified or is trusted by the user.
  virtual bool IsSecure() const = 0;
};

}  // namespace brindle
