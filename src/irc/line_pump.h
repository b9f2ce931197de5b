#pragma once
// The pump behind the timer tmrProcess: one step takes one line from the display queue to its views
// and its sound, and keeps the two load monitors and the window caption up to date.

#include <bitset>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "base/sound_player.h"
#include "irc/chat_colours.h"
#include "irc/chat_style.h"
#include "irc/line_kind.h"
#include "irc/output_queue.h"
#include "irc/session.h"
#include "irc/window_view.h"

namespace brindle {

struct ChatViews {
  ChatView& txtStatus;
  ChatView& txtChannel;
};

// Looks at each line before it is shown.
using LineScan = std::function<void(std::string_view line, Origin origin)>;

class LinePump {
 public:
  static constexpr int kTickMilliseconds = 10;
  static constexpr size_t kMany = 500;  // lines
  static constexpr TickCount kFrameMilliseconds = 8;

  LinePump(Screen screen, const Session& session, ChatStyle style, ChatViews views,
           SoundPlayer& sounds)
      : screen_(screen), session_(session), style_(style), views_(views), sounds_(sounds) {}

  void SetScanner(LineScan scan) { scan_ = std::move(scan); }

  // One step; shows at most one line or, while many wait and the user wants to catch up, as many as
  // a frame can take.
  void tmrProcess_Timer();

  // True when a step would do nothing but refresh the uptime.
  bool IsIdle() const { return screen_.queue.Pending() == 0 && shownPending_ == 0; }

 private:
  void RefreshMonitors();
  void RefreshUptime();
  // True when one was shown.
  bool ShowNext();
  void Show(OutputQueue::Line line);

  Screen screen_;
  const Session& session_;
  ChatStyle style_;
  ChatViews views_;
  SoundPlayer& sounds_;
  LineScan scan_;
  bool catchingUp_ = false;
  std::bitset<kSoundSlots> played_;  // in this step
  size_t pendingPeak_ = 0;
  size_t textPeak_ = 0;
  size_t shownPending_ = 0;
  std::string bufferMonitor_ = "0/0";
  std::string rtbMonitor_ = "0/0";
  std::string uptimeCaption_;
};

}  // namespace brindle
