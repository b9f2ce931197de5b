#pragma once
// Small operations on UTF-8 text that every room of the program shares: cutting and joining,
// removing blanks, lower-casing and the test for numeric text. "Blank" always means character 32.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brindle {

inline constexpr std::string_view kCrLf = "\r\n";

// Cuts `text` at every occurrence of `separator`, which must not be empty. Two separators in a row
// give an empty piece; an empty text gives one empty piece. The pieces point into `text`.
std::vector<std::string_view> Split(std::string_view text, std::string_view separator);

// The pieces from position `from` onward, joined with `separator`; empty when there are none.
std::string JoinFrom(const std::vector<std::string_view>& pieces, size_t from,
                     std::string_view separator);

// `text` without any of the bytes in `unwanted`, which must all be ASCII.
std::string RemoveChars(std::string_view text, std::string_view unwanted);

// `text` without any blank.
std::string RemoveBlanks(std::string_view text);

// True when nothing is left of `text` once every blank is removed.
bool IsBlank(std::string_view text);

// `text` without its leading and trailing blanks; points into `text`.
std::string_view TrimBlanks(std::string_view text);

// `text` up to its first CR, LF or NUL; points into `text`.
std::string_view FirstLine(std::string_view text);

// `text` in lower case by the simple (one to one) mapping of Unicode. Bytes that are not valid
// UTF-8 are kept as they are.
std::string LowerCase(std::string_view text);

// The same in upper case.
std::string UpperCase(std::string_view text);

// What two names that somebody typed are compared by: no blanks, lower case.
std::string MatchKey(std::string_view text);

// True when both texts are equal once lower-cased.
bool EqualsIgnoringCase(std::string_view a, std::string_view b);

// True when `text` in lower case begins with `lower`, which is in lower case.
bool StartsIgnoringCase(std::string_view text, std::string_view lower);

// True for text that reads as a decimal number: any blanks, an optional sign, digits with at most
// one point among them (at least one digit), any blanks. The empty text is not numeric.
bool IsNumericText(std::string_view text);

// True for one or more ASCII digits and nothing else.
bool IsAllDigits(std::string_view text);

// The whole number that `text` spells, blanks around it ignored; nothing when it is anything else
// or does not fit. REQUIRES: lowest <= highest.
std::optional<long long> WholeNumber(std::string_view text, long long lowest, long long highest);

// The numeric `text` as a whole number, rounded to the nearest (a half to the even one); nothing
// when it is not numeric or does not fit.
std::optional<std::int32_t> PortNumber(std::string_view text, std::int32_t lowest,
                                       std::int32_t highest);

// True when no byte of `text` has its top bit set.
bool IsAscii(std::string_view text);

// The number of Unicode characters in UTF-8 `text`; a byte that is not valid counts as one.
size_t CharacterCount(std::string_view text);

}  // namespace brindle
