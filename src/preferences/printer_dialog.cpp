#include "preferences/printer_dialog.h"

#include <commdlg.h>
#include <winspool.h>

#include <cstring>
#include <utility>
#include <vector>

#include "runtime/screen.h"

namespace vela {

namespace {

// Owns the global memory that the dialog takes and gives back.
class Global {
  public:
    Global() = default;
    ~Global() { GlobalFree(handle); }
    Global(const Global&) = delete;
    Global& operator=(const Global&) = delete;

    HGLOBAL handle = nullptr;
};

template <class Use>
void withLocked(HGLOBAL handle, Use use) {
    if (void* memory = handle ? GlobalLock(handle) : nullptr) {
        use(memory);
        GlobalUnlock(handle);
    }
}

// A printer's settings, with the stored ones entered; null when the printer cannot be asked.
HGLOBAL settingsOf(const PrinterChoice& choice) {
    HANDLE printer = nullptr;
    auto* name = const_cast<wchar_t*>(choice.printer.c_str());
    if (!OpenPrinterW(name, &printer, nullptr)) return nullptr;
    HGLOBAL result = nullptr;
    const LONG size = DocumentPropertiesW(nullptr, printer, name, nullptr, nullptr, 0);
    if (size > 0) result = GlobalAlloc(GHND, static_cast<SIZE_T>(size));
    bool filled = false;
    withLocked(result, [&](void* memory) {
        auto* settings = static_cast<DEVMODEW*>(memory);
        filled =
            DocumentPropertiesW(nullptr, printer, name, settings, nullptr, DM_OUT_BUFFER) == IDOK;
        if (!filled) return;
        settings->dmFields |= DM_COPIES | DM_ORIENTATION;
        settings->dmCopies = choice.copies;
        settings->dmOrientation = choice.orientation;
        if (choice.bin != 0) {
            settings->dmFields |= DM_DEFAULTSOURCE;
            settings->dmDefaultSource = choice.bin;
        }
        if (choice.size != 0) {
            settings->dmFields |= DM_PAPERSIZE;
            settings->dmPaperSize = choice.size;
        }
    });
    ClosePrinter(printer);
    if (!filled) GlobalFree(std::exchange(result, nullptr));
    return result;
}

// The names block that makes the dialog start at a printer.
HGLOBAL namesOf(const std::wstring& printer) {
    const std::size_t units = sizeof(DEVNAMES) / sizeof(wchar_t) + printer.size() + 3;
    HGLOBAL result = GlobalAlloc(GHND, units * sizeof(wchar_t));
    withLocked(result, [&](void* memory) {
        auto* names = static_cast<DEVNAMES*>(memory);
        auto* texts = static_cast<wchar_t*>(memory);
        names->wDriverOffset = sizeof(DEVNAMES) / sizeof(wchar_t);
        names->wDeviceOffset = static_cast<WORD>(names->wDriverOffset + 1);
        names->wOutputOffset = static_cast<WORD>(names->wDeviceOffset + printer.size() + 1);
        std::memcpy(texts + names->wDeviceOffset, printer.c_str(),
                    printer.size() * sizeof(wchar_t));
    });
    return result;
}

bool hasDefaultPrinter() {
    DWORD length = 0;
    return GetDefaultPrinterW(nullptr, &length) || GetLastError() == ERROR_INSUFFICIENT_BUFFER;
}

}  // namespace

std::optional<PrinterChoice> askForPrinter(HWND owner, const PrinterChoice& start) {
    if (!hasScreen()) return std::nullopt;
    Global settings;
    Global names;
    if (!start.printer.empty()) {
        settings.handle = settingsOf(start);
        if (settings.handle) names.handle = namesOf(start.printer);
    }
    if (!settings.handle && !hasDefaultPrinter()) return std::nullopt;
    PRINTDLGW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.Flags = PD_USEDEVMODECOPIESANDCOLLATE | PD_NOPAGENUMS | PD_NOSELECTION;
    dialog.nCopies = static_cast<WORD>(start.copies);
    dialog.hDevMode = settings.handle;
    dialog.hDevNames = names.handle;
    const BOOL chosen = PrintDlgW(&dialog);
    settings.handle = dialog.hDevMode;
    names.handle = dialog.hDevNames;
    if (!chosen) return std::nullopt;

    PrinterChoice choice = start;
    withLocked(names.handle, [&](void* memory) {
        choice.printer =
            static_cast<wchar_t*>(memory) + static_cast<DEVNAMES*>(memory)->wDeviceOffset;
    });
    withLocked(settings.handle, [&](void* memory) {
        const auto* chosenSettings = static_cast<DEVMODEW*>(memory);
        if (chosenSettings->dmFields & DM_COPIES) choice.copies = chosenSettings->dmCopies;
        if (chosenSettings->dmFields & DM_ORIENTATION) {
            choice.orientation = chosenSettings->dmOrientation;
        }
        if (chosenSettings->dmFields & DM_DEFAULTSOURCE)
            choice.bin = chosenSettings->dmDefaultSource;
        if (chosenSettings->dmFields & DM_PAPERSIZE) choice.size = chosenSettings->dmPaperSize;
    });
    return choice;
}

}  // namespace vela
