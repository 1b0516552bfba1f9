// Asking the user for a file.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <optional>
#include <string>

namespace vela {

struct FileQuestion {
    std::wstring title;   // empty: the platform's own
    bool opens = true;    // else the file is to be saved
    std::wstring name;    // what the dialog starts with: a file, with or without its folder
    std::wstring filter;  // see dialog_filter.h
    long flags = 0;       // the platform's OFN_...; 0: the usual ones
};

struct FileChoice {
    std::wstring path;
    long flags = 0;  // as the dialog leaves them
};

// Through the platform's dialog. Nothing when the user cancels, and at once where there is no
// screen to show it on.
std::optional<FileChoice> askForFile(const FileQuestion& question);

// Through a common dialog control of the caller's, late bound: DialogTitle, FileName, Filter, Flags
// and CancelError are set, ShowOpen or ShowSave called, FileName and Flags read. What the question
// leaves empty stays as the control has it. Throws Error when the user cancels, and when the
// control fails.
FileChoice askForFile(IDispatch* control, const FileQuestion& question);

}  // namespace vela
