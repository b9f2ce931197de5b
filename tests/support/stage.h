#pragma once
// What stands around the program's logic in a test: window, panel, boxes, socket, sounds and time,
// with one journal, so that a case is a row: what was done, and the journal that must come of it.

#include <ctime>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/clock.h"
#include "base/dialogs.h"
#include "base/sound_player.h"
#include "base/text.h"
#include "irc/chat_colours.h"
#include "irc/chat_socket.h"
#include "irc/connection.h"
#include "irc/output_queue.h"
#include "irc/window_view.h"

namespace brindle {

// Whatever stands around writes each call into it as a few words, in order. The boxes do so here,
// and answer as they are told.
class Journal : public Dialogs {
 public:
  explicit Journal(const char* between = "\n") : between_(between) {}

  void Note(const std::string& words) { journal_.push_back(words); }

  // What was written since the last time.
  std::string Taken() {
    const std::vector<std::string> taken = std::exchange(journal_, {});
    return JoinFrom({taken.begin(), taken.end()}, 0, between_);
  }

  void Notice(Icon icon, const std::string& text) override {
    Note(std::string(1, "i!x"[static_cast<int>(icon)]) + " " +
         JoinFrom(Split(text, kCrLf), 0, "/"));
  }
  bool Question(Icon icon, const std::string& text) override {
    Notice(icon, text);
    return Answer().has_value();
  }
  std::optional<std::string> Input(const std::string& prompt) override {
    Note("? " + prompt);
    return Answer();
  }
  std::optional<std::string> OpenFile(const std::string& filter) override { return Input(filter); }
  std::optional<Colour> PickColour(Colour) override { return std::nullopt; }

  std::deque<std::optional<std::string>> answers;  // to boxes, in turn; nothing cancels
  std::optional<std::string> answer;               // when there is none of those

 private:
  std::optional<std::string> Answer() {
    if (answers.empty()) return answer;
    std::optional<std::string> next = std::move(answers.front());
    answers.pop_front();
    return next;
  }

  const char* between_;
  std::vector<std::string> journal_;
};

// A text made readable: "^C" for the colour mark, "^B" for bold, "|" for our line break.
inline std::string Readable(std::string_view text) {
  std::string readable = JoinFrom(Split(text, "\003"), 0, "^C");
  readable = JoinFrom(Split(readable, "\002"), 0, "^B");
  return JoinFrom(Split(readable, kCrLf), 0, "|");
}

class Stage : public Journal,
              public WindowView,
              public ConnectView,
              public ChatSocket,
              public SoundPlayer,
              public Clock,
              public EventPump {
 public:
  explicit Stage(const char* between = "\n") : Journal(between) {}

  // Writes each line that is queued at once: "2|^C1<me> hi".
  void Watch(OutputQueue& queue) {
    queue.OnQueued([this, &queue] {
      const OutputQueue::Line line = queue.Take();
      Note(std::to_string(static_cast<int>(line.kind)) + Readable(line.text));
      if (onLine) onLine(line);
    });
  }

  void SetStatusPanel(const std::string& text) override { Note("panel " + text); }
  void SetWindowCaption(const std::string& text) override { Note("caption " + text); }
  void SetBufferMonitor(const std::string& text) override { Note("pending " + text); }
  void SetRtbMonitor(const std::string& text) override { Note("shown " + text); }
  void Show_RoomTab() override { Note("room tab"); }
  void FocusSendBox() override { Note("focus"); }
  void SetSendText(const std::string& text) override { Note("box '" + text + "'"); }
  void ShowHint(const std::string& text) override { Note("hint " + text); }
  void SessionChanged() override {}
  void CallUser() override { Note("call"); }

  void SetConnectButton(ConnectCaption caption, bool enabled) override {
    Note(std::string("button ") + (caption == ConnectCaption::kConnect ? "Connect" : "Disconnect") +
         (enabled ? "" : " off"));
  }
  void ShowCancelButton(bool shown) override { Note(shown ? "cancel" : "no cancel"); }
  void SetNickFieldsEnabled(bool enabled) override { Note(enabled ? "nicks" : "no nicks"); }
  void SetAlternateNick(const std::string& nick) override { Note("alternate " + nick); }
  void SetLoginStatus(const std::string& text) override { Note("login " + text); }
  void SetConnectTrouble(const std::string& text) override { Note("trouble " + text); }
  void SetPort(const std::string& text) override { Note("port " + text); }
  void SetTls(bool on) override { Note(on ? "tls" : "no tls"); }

  void Connect(const ChatRoute& route) override {
    Note("connect " + route.host + " " + std::to_string(route.port) + (route.tls ? " tls" : "") +
         (route.trusted.empty() ? "" : " " + route.trusted));
  }
  void Close() override {
    Note("close");
    open = false;
  }
  void Send(std::string_view bytes) override {
    if (!open) return;
    // Only the line end that belongs there is taken off: any other shows up in the comparison.
    const bool ended = bytes.ends_with(kCrLf);
    sentAt.push_back(ticks);
    Note("> " + (ended ? Readable(bytes.substr(0, bytes.size() - 2)) : "no line end"));
  }
  bool IsConnected() const override { return open; }
  bool IsSecure() const override { return open && isSecure; }

  void Play(const std::string& path) override { Note("play " + path); }

  TickCount Ticks() const override { return ticks; }
  std::tm LocalTime() const override {
    std::tm time{};
    time.tm_year = 126;
    time.tm_mon = 10;
    time.tm_mday = 21;
    time.tm_hour = 15;
    time.tm_min = 7;
    return time;
  }
  void LetEventsRun(int) override {}

  bool open = false;  // the socket
  bool isSecure = false;
  TickCount ticks = 1'000'000;
  std::vector<TickCount> sentAt;  // of each line sent
  std::function<void(const OutputQueue::Line&)> onLine;
};

}  // namespace brindle
