#pragma once
// Ed25519 (RFC 8032): proves that who holds a key wrote a text.

#include <string_view>

namespace brindle {

// `key` is the public key and `signature` that of `text`, both in base64, with white space or
// without. False also where either is no such thing, and where the program was built without what
// can tell.
bool IsSignedBy(std::string_view key, std::string_view text, std::string_view signature);

}  // namespace brindle
