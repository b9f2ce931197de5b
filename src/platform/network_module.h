#pragma once
// What the network module gives to the program.

#include "platform/network.h"

// New ones, which the caller owns.
extern "C" {
__attribute__((visibility("default"))) brindle::NetworkChatSocket* BrindleChatSocket();
__attribute__((visibility("default"))) brindle::NetworkHttpClient* BrindleHttpClient(
    int patienceMilliseconds);
}
