#pragma once
// What the two kinds of soak share. Time is not waited for: what the event loop would sleep, the
// clocks skip, so all timers of the toolkit follow. Work takes as long as it takes.

#include "soak/room_server.h"
#include "support/wait.h"
#include "support/window_driver.h"

namespace brindle::soak {

// From now on, or no longer.
void SkipWaits(bool skip);
// Waits, by the program's clocks.
void Pass(int milliseconds);
// Waits until it comes true, for ten minutes at most.
template <typename Condition>
void Await(Condition condition, const char* what, std::string_view where = "") {
  Require(test::WaitUntil(condition, 600'000), what, where);
}

// A folder that knows the server and its room, with a list "mails.txt" of so many rows.
std::shared_ptr<test::DataFolder> FolderFor(const RoomServer& server, int chatLines, int rows);

// Kills the server, and then the program, so many times.
void Kill(int times);
// The program that is killed: goes to the address, and changes and saves in `folder` until then.
int BeVictim(const std::string& folder, const std::string& address);

}  // namespace brindle::soak
