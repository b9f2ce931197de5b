#pragma once
// What a search needs to know so that it can look at titles as they stand, in whatever case: almost
// every character that is a lower-cased one in another case is its upper case, of the same length.
// The few others ("odd" ones: I with a dot, the Kelvin sign) are looked for apart.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace brindle {

// `lower` with each character replaced by the only other one that becomes it in lower case and is
// not odd; the same length, character for character. REQUIRES: valid UTF-8 in lower case.
std::string UpperTwin(std::string_view lower);

// False when no text whose characters begin with these bytes holds odd ones; see Utf8Check::Leads.
bool MayHoldOdd(std::uint64_t leads);

// The place of the first odd character at or after `from`; npos when there is none.
// REQUIRES: `from` is not within a character.
size_t FindOdd(std::string_view text, size_t from);

}  // namespace brindle
