#include "irc/sasl.h"

#include <algorithm>
#include <cstdint>

#include "base/text.h"

namespace brindle {
namespace {

constexpr size_t kPiece = 400;
constexpr std::string_view kAuthenticate = "AUTHENTICATE ";

}  // namespace

std::string_view MechanismOf(AccountProof proof) {
  return proof == AccountProof::kCertificate ? "EXTERNAL" : "PLAIN";
}

bool TakesMechanism(std::string_view value, std::string_view mechanism) {
  if (value.empty()) return true;
  const std::vector<std::string_view> offered = Split(value, ",");
  return std::any_of(offered.begin(), offered.end(),
                     [&](std::string_view name) { return EqualsIgnoringCase(name, mechanism); });
}

std::string PlainMessage(std::string_view account, std::string_view password) {
  std::string message(1, '\0');
  message.append(account).append(1, '\0').append(password);
  return message;
}

std::vector<std::string> AuthenticateLines(std::string_view message) {
  const std::string text = Base64(message);
  std::vector<std::string> lines;
  for (size_t at = 0; at < text.size(); at += kPiece) {
    lines.push_back(std::string(kAuthenticate).append(text, at, kPiece));
  }
  // A full piece says that more is to come.
  if (text.size() % kPiece == 0) lines.push_back(std::string(kAuthenticate) + "+");
  return lines;
}

std::string Base64(std::string_view bytes) {
  constexpr std::string_view kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  constexpr int kDigitBits = 6;
  constexpr size_t kBytes = 3;
  std::string text;
  for (size_t at = 0; at < bytes.size(); at += kBytes) {
    const std::string_view group = bytes.substr(at, kBytes);
    std::uint32_t bits = 0;
    for (size_t i = 0; i < kBytes; ++i) {
      bits = bits << 8 | (i < group.size() ? static_cast<unsigned char>(group[i]) : 0U);
    }
    for (size_t i = 0; i <= kBytes; ++i) {
      const std::uint32_t digit = bits >> (kDigitBits * (kBytes - i)) & 63U;
      text += i <= group.size() ? kDigits[digit] : '=';
    }
  }
  return text;
}

}  // namespace brindle
