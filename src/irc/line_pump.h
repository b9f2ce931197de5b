#pragma once
// The pump behind the timer tmrProcess: one step takes one line from the display queue to its views
// and its sound, and keeps the two load monitors and the window caption up to date.

#include <cstdint>
#include <string>
#include <string_view>

#include "base/clock.h"
#include "base/sound_player.h"
#include "irc/chat_colours.h"
#include "irc/line_kind.h"
#include "irc/output_queue.h"
#include "irc/session.h"
#include "settings/options.h"

namespace brindle {

class PumpView {
 public:
  virtual ~PumpView() = default;
  // lblBufferSizePeak and lblRTBSizePeak: "current/peak".
  virtual void SetBufferMonitor(const std::string& text) = 0;
  virtual void SetRtbMonitor(const std::string& text) = 0;
  virtual void SetWindowCaption(const std::string& text) = 0;
};

// Looks at each line before it is shown.
class LineScanner {
 public:
  virtual ~LineScanner() = default;
  virtual void Scan(std::string_view line) = 0;
};

class LinePump {
 public:
  static constexpr int kTickMilliseconds = 10;

  LinePump(OutputQueue& queue, const Session& session, const Options& options, ChatColours& display,
           PumpView& view, SoundPlayer& sounds, const Clock& clock)
      : queue_(queue),
        session_(session),
        options_(options),
        display_(display),
        view_(view),
        sounds_(sounds),
        clock_(clock) {}

  void SetScanner(LineScanner& scanner) { scanner_ = &scanner; }

  // One step; shows at most one line.
  void tmrProcess_Timer();

  // While busy, nothing is shown and nothing leaves the queue: the parser is appending.
  void SetBusy(bool busy) { busy_ = busy; }
  bool IsBusy() const { return busy_; }

  // True when a step would do nothing but refresh the uptime.
  bool IsIdle() const { return queue_.Pending() == 0 && shownPending_ == 0; }

 private:
  void RefreshMonitors();
  void RefreshUptime();
  void Show(OutputQueue::Line line);

  OutputQueue& queue_;
  const Session& session_;
  const Options& options_;
  ChatColours& display_;
  PumpView& view_;
  SoundPlayer& sounds_;
  const Clock& clock_;
  LineScanner* scanner_ = nullptr;
  bool busy_ = false;
  size_t pendingPeak_ = 0;
  size_t textPeak_ = 0;
  size_t shownPending_ = 0;
  std::string bufferMonitor_ = "0/0";
  std::string rtbMonitor_ = "0/0";
  std::string uptimeCaption_;
};

}  // namespace brindle
