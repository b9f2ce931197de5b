#include <sodium.h>

#include <array>

#include "platform/signature.h"

namespace brindle {
namespace {

// False unless the text holds just as many bytes.
template <size_t kBytes>
bool Decode(std::string_view base64, std::array<unsigned char, kBytes>& bytes) {
  size_t length = 0;
  return sodium_base642bin(bytes.data(), bytes.size(), base64.data(), base64.size(), " \t\r\n",
                           &length, nullptr, sodium_base64_VARIANT_ORIGINAL) == 0 &&
         length == kBytes;
}

}  // namespace

bool IsSignedBy(std::string_view key, std::string_view text, std::string_view signature) {
  std::array<unsigned char, crypto_sign_PUBLICKEYBYTES> keyBytes{};
  std::array<unsigned char, crypto_sign_BYTES> signatureBytes{};
  return sodium_init() >= 0 && Decode(key, keyBytes) && Decode(signature, signatureBytes) &&
         crypto_sign_verify_detached(signatureBytes.data(),
                                     reinterpret_cast<const unsigned char*>(text.data()),
                                     text.size(), keyBytes.data()) == 0;
}

}  // namespace brindle
