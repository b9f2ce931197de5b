#pragma once
// The updater's transfers over the toolkit's network access: http and https, redirects that are no
// less safe, and an end to a server that does not answer.

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPointer>
#include <QTimer>
#include <deque>
#include <functional>
#include <utility>

#include "platform/proxy_qt.h"
#include "update/http_client.h"

namespace brindle {

class QtHttpClient : public HttpClient {
 public:
  // A server is given up after this long without a byte of its answer.
  static constexpr int kPatienceMilliseconds = 30000;

  explicit QtHttpClient(int patienceMilliseconds = kPatienceMilliseconds);
  ~QtHttpClient() override;

  // Who is told the states; must be set before Execute.
  void SetListener(std::function<void(HttpState)> listener) { listener_ = std::move(listener); }

  // Which proxy to go through from now on, with the password of its user.
  void SetConnection(const ConnectionOptions& options, const std::string& password) {
    UseProxy(manager_, options, password);
  }

  void Execute(const std::string& url) override;
  std::string GetHeader(const std::string& name) override;
  std::optional<std::string> GetChunk(size_t size) override;
  void Cancel() override;

 private:
  void Watch(QNetworkReply& reply);
  void OnHeaders();
  void OnFinished();
  HttpState Failure() const;
  int Status() const;
  // Raises the state once the caller has returned to the event loop, unless cancelled by then.
  void Raise(HttpState state);
  void RaiseNext();
  bool IsBroken() const;
  // Lets events run until the reply tells something new; false when the program ends meanwhile.
  bool WaitForNews();

  int patience_;
  QNetworkAccessManager manager_;
  QPointer<QNetworkReply> reply_;
  std::function<void(HttpState)> listener_;
  std::deque<HttpState> waiting_;
  // A timer and not a posted event: the listener waits for the body inside its handler, and the
  // toolkit may hold back posted events for as long as one of them is being handled.
  QTimer raiser_;
  bool completed_ = false;  // kResponseCompleted or kError has been raised
};

}  // namespace brindle
