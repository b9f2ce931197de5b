#pragma once
// The baseline for receiving: another IRC client library that only counts the room's lines.

#include <cstddef>

namespace brindle {

// Connects to a server on loopback and returns once `lines` lines were said in a room; the number
// of lines counted.
size_t CountWithLibircclient(int port, size_t lines);

}  // namespace brindle
