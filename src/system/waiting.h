// Waiting in a program with windows.
#pragma once

#include <windows.h>

namespace vela {

// Waits while this thread's messages and timers are served; those that are there when it begins are
// served even where the time is 0. Returns early when the program is asked to quit, and leaves that
// message to the program's own loop.
void waitServingMessages(DWORD milliseconds);

}  // namespace vela
