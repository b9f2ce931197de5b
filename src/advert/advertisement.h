#pragma once
// The advertisement: every ten minutes one line about the program in the current room, and one of
// two users' words on it. The Idle button switches it on and off.

#include <cstdint>
#include <string>

#include "irc/room_voice.h"
#include "irc/session.h"

namespace brindle {

// What the advertisement keeps between two lines.
struct AdState {
  std::int32_t count = 0;  // advertisements sent since the program started
  std::string text;        // the line being sent
};

class AdvertisementView {
 public:
  virtual ~AdvertisementView() = default;
  // The caption of cmdIdle: "Back" while the advertising runs, "Idle" while it is off.
  virtual void SetIdleCaption(const std::string& caption) = 0;
  // The caption of lblSentAd.
  virtual void SetSentAd(const std::string& caption) = 0;
  // Starts or stops tmrAD.
  virtual void EnableAdTimer(bool enabled) = 0;
};

class Advertisement {
 public:
  static constexpr int kTickMilliseconds = 60000;

  // `web` is the host that the lines name.
  Advertisement(const Session& session, RoomVoice& voice, AdvertisementView& view, std::string web)
      : session_(session), voice_(voice), view_(view), web_(std::move(web)) {}

  // One minute has passed.
  void tmrAD_Timer();

  void cmdIdle_Click();

  const AdState& State() const { return state_; }

 private:
  bool MayAdvertise() const;
  void Advertise();
  void Say(std::string text);
  void SetCaption(const char* caption);

  const Session& session_;
  RoomVoice& voice_;
  AdvertisementView& view_;
  const std::string web_;
  AdState state_;
  std::string caption_ = "Idle";
  int tag_ = 0;  // ticks since the cycle began
};

}  // namespace brindle
