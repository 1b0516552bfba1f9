#include "preferences/printer_dialog.h"

#include <commdlg.h>
#include <winspool.h>

#include <cstring>
#include <utility>

#include "runtime/handles.h"
#include "runtime/screen.h"

namespace vela {

namespace {

struct PrinterHandleTraits : NullIsNone<HANDLE> {
    static void close(HANDLE printer) { ClosePrinter(printer); }
};
using PrinterHandle = Owner<PrinterHandleTraits>;

// A lock on global memory, by the memory's handle.
struct MemoryLockTraits : NullIsNone<HGLOBAL> {
    static void close(HGLOBAL memory) { GlobalUnlock(memory); }
};
using MemoryLock = Owner<MemoryLockTraits>;

template <class Use>
void withLocked(const GlobalMemory& owner, Use use) {
    void* const memory = owner ? GlobalLock(owner.get()) : nullptr;
    if (!memory) return;
    const MemoryLock lock(owner.get());
    use(memory);
}

void enter(const PrinterChoice& choice, DEVMODEW& settings) {
    settings.dmFields |= DM_COPIES | DM_ORIENTATION;
    settings.dmCopies = choice.copies;
    settings.dmOrientation = choice.orientation;
    if (choice.bin != 0) {
        settings.dmFields |= DM_DEFAULTSOURCE;
        settings.dmDefaultSource = choice.bin;
    }
    if (choice.size != 0) {
        settings.dmFields |= DM_PAPERSIZE;
        settings.dmPaperSize = choice.size;
    }
}

// A printer's settings, with the stored ones entered; none when the printer cannot be asked.
GlobalMemory settingsOf(const PrinterChoice& choice) {
    PrinterHandle printer;
    auto* name = const_cast<wchar_t*>(choice.printer.c_str());
    if (!OpenPrinterW(name, printer.put(), nullptr)) return {};
    const auto ask = [&](DEVMODEW* into, DWORD mode) {
        return DocumentPropertiesW(nullptr, printer.get(), name, into, nullptr, mode);
    };
    const LONG size = ask(nullptr, 0);
    if (size <= 0) return {};
    GlobalMemory result(GlobalAlloc(GHND, static_cast<SIZE_T>(size)));
    bool filled = false;
    withLocked(result, [&](void* memory) {
        auto* settings = static_cast<DEVMODEW*>(memory);
        filled = ask(settings, DM_OUT_BUFFER) == IDOK;
        if (filled) enter(choice, *settings);
    });
    return filled ? std::move(result) : GlobalMemory();
}

// The names block that makes the dialog start at a printer.
GlobalMemory namesOf(const std::wstring& printer) {
    const std::size_t units = sizeof(DEVNAMES) / sizeof(wchar_t) + printer.size() + 3;
    GlobalMemory result(GlobalAlloc(GHND, units * sizeof(wchar_t)));
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

// `start` with what the dialog gave back in its place.
PrinterChoice choiceIn(PrinterChoice start, const GlobalMemory& settings,
                       const GlobalMemory& names) {
    withLocked(names, [&](void* memory) {
        start.printer =
            static_cast<wchar_t*>(memory) + static_cast<DEVNAMES*>(memory)->wDeviceOffset;
    });
    withLocked(settings, [&](void* memory) {
        const auto& chosen = *static_cast<DEVMODEW*>(memory);
        if (chosen.dmFields & DM_COPIES) start.copies = chosen.dmCopies;
        if (chosen.dmFields & DM_ORIENTATION) start.orientation = chosen.dmOrientation;
        if (chosen.dmFields & DM_DEFAULTSOURCE) start.bin = chosen.dmDefaultSource;
        if (chosen.dmFields & DM_PAPERSIZE) start.size = chosen.dmPaperSize;
    });
    return start;
}

}  // namespace

std::optional<PrinterChoice> askForPrinter(HWND owner, const PrinterChoice& start) {
    if (!hasScreen()) return std::nullopt;
    GlobalMemory settings;
    GlobalMemory names;
    if (!start.printer.empty()) {
        settings = settingsOf(start);
        if (settings) names = namesOf(start.printer);
    }
    if (!settings && !hasDefaultPrinter()) return std::nullopt;
    PRINTDLGW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.Flags = PD_USEDEVMODECOPIESANDCOLLATE | PD_NOPAGENUMS | PD_NOSELECTION;
    dialog.nCopies = static_cast<WORD>(start.copies);
    // The dialog may put others in their place.
    dialog.hDevMode = settings.release();
    dialog.hDevNames = names.release();
    const BOOL chosen = PrintDlgW(&dialog);
    settings.reset(dialog.hDevMode);
    names.reset(dialog.hDevNames);
    if (!chosen) return std::nullopt;
    return choiceIn(start, settings, names);
}

}  // namespace vela
