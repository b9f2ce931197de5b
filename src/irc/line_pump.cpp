#include "irc/line_pump.h"

#include <algorithm>

#include "base/text.h"
#include "base/time_text.h"
#include "settings/product.h"

namespace brindle {
namespace {

std::string MonitorText(size_t current, size_t& peak) {
  peak = std::max(peak, current);
  return std::to_string(current) + "/" + std::to_string(peak);
}

}  // namespace

void LinePump::tmrProcess_Timer() {
  RefreshMonitors();
  RefreshUptime();
  played_.reset();
  catchingUp_ = style_.options.catchUp &&
                (catchingUp_ ? screen_.queue.Pending() > 0 : screen_.queue.Pending() > kMany);
  const TickCount begin = style_.clock.Ticks();
  while (ShowNext() && catchingUp_ && style_.clock.Ticks() - begin < kFrameMilliseconds) {
  }
}

bool LinePump::ShowNext() {
  if (screen_.queue.IsBusy() || screen_.queue.Pending() == 0) return false;
  const bool alone = screen_.queue.Pending() == 1;
  OutputQueue::Line line = screen_.queue.Take();
  if (alone && IsBlank(line.text)) return true;
  if (scan_) scan_(line.text, line.origin);
  Show(std::move(line));
  return true;
}

void LinePump::RefreshMonitors() {
  shownPending_ = screen_.queue.Pending();
  const auto refresh = [](std::string& shown, std::string text, const auto& show) {
    if (text == shown) return;
    shown = std::move(text);
    show(shown);
  };
  refresh(bufferMonitor_, MonitorText(shownPending_, pendingPeak_),
          [this](const std::string& text) { screen_.window.SetBufferMonitor(text); });
  refresh(rtbMonitor_, MonitorText(views_.txtChannel.TextLength(), textPeak_),
          [this](const std::string& text) { screen_.window.SetRtbMonitor(text); });
}

void LinePump::RefreshUptime() {
  if (session_.connectionState != ConnectionState::kRegistered) {
    uptimeCaption_.clear();
    return;
  }
  const std::int64_t seconds = (style_.clock.Ticks() - session_.connectedSince) / 1000;
  std::string caption = VersionText() + " [NICK : " + session_.currentNick +
                        "] [CONNECTED : " + DurationText(seconds, DurationStyle::kAltDhms) + "]";
  if (caption == uptimeCaption_) return;
  uptimeCaption_ = std::move(caption);
  screen_.window.SetWindowCaption(uptimeCaption_);
}

void LinePump::Show(OutputQueue::Line line) {
  const Route route = RouteOf(line.kind);
  if (route.status) Color_Response(line.text, views_.txtStatus, style_.options);
  if (route.room) Color_Response(line.text, views_.txtChannel, style_.options);
  if (!route.sound) return;
  const SoundOption& sound = style_.options.sounds[static_cast<size_t>(*route.sound)];
  // Once a step is all that anybody hears.
  if (!sound.on || sound.path.empty() || played_[static_cast<size_t>(*route.sound)]) return;
  played_.set(static_cast<size_t>(*route.sound));
  sounds_.Play(sound.path);
}

}  // namespace brindle
