#pragma once
// The updater's transfers over the toolkit's network access: http and https, redirects that are no
// less safe, and an end to a server that does not answer.

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPointer>
#include <QTimer>
#include <deque>

#include "platform/network.h"
#include "platform/proxy_qt.h"

namespace brindle {

class QtHttpClient : public NetworkHttpClient {
 public:
  explicit QtHttpClient(int patienceMilliseconds);
  ~QtHttpClient() override;

  void SetConnection(const ConnectionOptions& options, const std::string& password) override {
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
  std::deque<HttpState> waiting_;
  // A timer and not a posted event: the listener waits for the body inside its handler, and the
  // toolkit may hold back posted events for as long as one of them is being handled.
  QTimer raiser_;
  bool completed_ = false;  // kResponseCompleted or kError has been raised
};

}  // namespace brindle
