#include "system/waiting.h"

#include <chrono>

namespace vela {

namespace {

using Clock = std::chrono::steady_clock;

// The time left, rounded up to whole milliseconds; 0 when there is none.
DWORD millisecondsTo(Clock::time_point end) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
    return left.count() > 0 ? static_cast<DWORD>(left.count()) : 0;
}

// Serves one message; false when there is none.
bool serveMessage(bool& quit) {
    MSG message;
    if (!PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) return false;
    quit = message.message == WM_QUIT;
    if (quit) {
        PostQuitMessage(static_cast<int>(message.wParam));
    } else {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return true;
}

}  // namespace

void waitServingMessages(DWORD milliseconds) {
    constexpr std::chrono::milliseconds kAtLeast(1);
    const auto start = Clock::now();
    const auto end = start + std::chrono::milliseconds(milliseconds);
    for (bool quit = false; !quit;) {
        const DWORD left = millisecondsTo(end);
        // Messages that go on coming do not keep it beyond its time.
        if (left == 0 && Clock::now() - start > kAtLeast) return;
        if (serveMessage(quit)) continue;
        if (left == 0) return;
        MsgWaitForMultipleObjectsEx(0, nullptr, left, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    }
}

}  // namespace vela
