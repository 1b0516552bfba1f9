// Printer choices, kept by reference and by the caller's number for a kind of printout.
#pragma once

#include "preferences/PPItem.h"
#include "preferences/printer_dialog.h"
#include "preferences/section_manager.h"

namespace vela {

// What a caller passes for a printout that has no stored choice.
struct PrintDefaults {
    short copies = 0;  // 0: as the printer has it
    long orientation = 0;
    bool override = false;  // whether these win over a stored choice's
};

using PPManager = SectionManager<PPItem>;

class PPHelper {
  public:
    explicit PPHelper(const ComPtr<UPManager>& manager) : section_(manager, kPPSection) {}

    // Null when no choice is stored.
    ComPtr<PPItem> choice(short type, std::wstring_view reference) const;
    // Applies the stored choice to the printer, or the defaults when there is none. True when a
    // stored choice was applied.
    bool apply(short type, std::wstring_view reference, _ISetPrinter* printer,
               const PrintDefaults& defaults) const;
    // Shows the printer dialog over a window, stores the choice and applies it. False when the user
    // cancelled or there is no printer.
    bool ask(HWND owner, short type, std::wstring_view reference, _ISetPrinter* printer,
             const PrintDefaults& defaults) const;

  private:
    PPManager section_;
};

}  // namespace vela
