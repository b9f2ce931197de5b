#pragma once
// The HTTP transfers of the updater: one GET at a time, asynchronous up to the answer's headers,
// then read in chunks. What a transfer tells about itself reaches Updater::iNet_StateChanged.

#include <cstddef>
#include <optional>
#include <string>

namespace brindle {

// What a transfer tells about itself; the updater acts on these of its states only.
enum class HttpState {
  kConnecting = 3,
  kRequesting = 5,
  kError = 11,              // no successful answer; nothing follows
  kProxyRefused = 13,       // the same, because the proxy does not let the user through
  kResponseCompleted = 12,  // the headers of a successful answer are there, the body can be read
};

class HttpClient {
 public:
  virtual ~HttpClient() = default;
  // Begins to get `url`; an earlier transfer is dropped. The states are raised by the event loop,
  // none out of this call and none after Cancel.
  virtual void Execute(const std::string& url) = 0;
  // A header of the answer by its name, in any case; empty when there is none.
  virtual std::string GetHeader(const std::string& name) = 0;
  // The next bytes of the body: `size` of them, fewer at its end, none after it. Waits while window
  // events run. Nothing when the transfer broke or was cancelled.
  virtual std::optional<std::string> GetChunk(size_t size) = 0;
  // Drops the transfer; safe at any time.
  virtual void Cancel() = 0;
};

}  // namespace brindle
