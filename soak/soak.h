#pragma once
// What the two kinds of soak share. Time is not waited for: what the event loop would sleep, the
// clocks skip, so all timers of the toolkit follow. Work takes as long as it takes.

#include "soak/room_server.h"
#include "support/wait.h"
#include "support/window_driver.h"

namespace brindle::soak {

// From now on, or no longer.
void SkipWaits(bool skip);

// What the process has computed so far, in microseconds: no other program on the machine counts.
std::int64_t WorkedMicroseconds();

// Waits, by the program's clocks.
void Pass(int milliseconds);

// A folder that knows the server and its room.
std::shared_ptr<test::DataFolder> FolderFor(const RoomServer& server, int chatLines);

// Kills the server, and then the program, so many times.
void Kill(int times);
// The program that is killed: goes to the address, and changes and saves in `folder` until then.
int BeVictim(const std::string& folder, const std::string& address);

}  // namespace brindle::soak
