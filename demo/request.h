#pragma once
// The lines that users say to the bot, and what they ask for.

#include <optional>
#include <string>
#include <string_view>

namespace demo {

struct Request {
  enum class Kind { kMails, kBadMails, kAccessCode, kVerify, kList, kStatus, kUnknown };
  Kind kind = Kind::kUnknown;
  std::string screenName;  // as typed; may contain blanks, and may be missing
  std::string code;        // kVerify
  int first = 0;           // kMails: both from 1 to the number of mails, first <= last
  int last = 0;
};

// What follows "!handle " in a text said in the room; nothing when the text does not start with
// "!" and the handle as its first word. The case of the handle does not matter.
std::optional<std::string_view> AddressedTo(std::string_view handle, std::string_view text);

// Reads "send <screen name> <what>" or "verify <screen name> <code>". Since screen names may have
// blanks, the last word is the <what> or the <code>.
Request ParseRequest(std::string_view words, int mailCount);

// The access code that belongs to a screen name; its case and blanks do not matter.
std::string AccessCode(std::string_view screenName);

}  // namespace demo
