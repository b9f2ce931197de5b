#pragma once
// How an account is proven to a server before the session begins (RFC 4422): the mechanisms PLAIN
// (RFC 4616) and EXTERNAL, and the lines that carry them.

#include <string>
#include <string_view>
#include <vector>

#include "settings/connection_options.h"

namespace brindle {

// "PLAIN" or "EXTERNAL". REQUIRES: a proof.
std::string_view MechanismOf(AccountProof proof);

// True when a server that offers "sasl" with this value takes the mechanism. One that gives no
// value has to be asked.
bool TakesMechanism(std::string_view value, std::string_view mechanism);

// What PLAIN says: the account's own rights are asked for, nobody else's.
std::string PlainMessage(std::string_view account, std::string_view password);

// A message as lines: base64 in pieces of 400 bytes, the last one shorter.
std::vector<std::string> AuthenticateLines(std::string_view message);

std::string Base64(std::string_view bytes);

}  // namespace brindle
