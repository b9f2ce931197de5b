#pragma once
// Chat views and sounds, written down.

#include <string>
#include <utility>
#include <vector>

#include "base/sound_player.h"
#include "irc/chat_colours.h"

namespace brindle {

class FakeChatView : public ChatView {
 public:
  void Append(const std::vector<ColouredRun>& added) override {
    for (const ColouredRun& run : added) {
      text += run.text;
      runs.push_back(run);
    }
  }
  size_t TextLength() const override { return text.size(); }

  std::string TakeText() { return std::exchange(text, {}); }

  std::string text;
  std::vector<ColouredRun> runs;
};

class FakeSounds : public SoundPlayer {
 public:
  void Play(const std::string& path) override { played.push_back(path); }
  std::vector<std::string> played;
};

}  // namespace brindle
