// The platform's printer dialog.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace vela {

struct PrinterChoice {
    std::wstring printer;  // empty: the default printer
    short copies = 1;
    short orientation = 1;  // 1 portrait, 2 landscape
    short bin = 0;          // platform paper source; 0: as the printer has it
    short size = 0;         // platform paper size; 0: as the printer has it
};

// Lets the user choose, starting from `start`. Nothing when he cancels, and at once when there is
// no printer to start from, or no screen to ask on.
std::optional<PrinterChoice> askForPrinter(HWND owner, const PrinterChoice& start);

}  // namespace vela
