#include "files/file_dialog.h"

#include <commdlg.h>

#include <vector>

#include "automation/adapter.h"
#include "files/core/dialog_filter.h"
#include "files/core/path_parts.h"
#include "runtime/screen.h"

namespace vela {

namespace {

constexpr std::size_t kLongestPath = 32768;
constexpr DWORD kUsual = OFN_HIDEREADONLY | OFN_PATHMUSTEXIST;
// One file is asked for, by the dialog as it is, and the current folder stays.
constexpr DWORD kAlways = OFN_EXPLORER | OFN_NOCHANGEDIR;
constexpr DWORD kNever = OFN_ALLOWMULTISELECT | OFN_ENABLEHOOK | OFN_ENABLETEMPLATE |
                         OFN_ENABLETEMPLATEHANDLE | OFN_ENABLEINCLUDENOTIFY;

DWORD flagsFor(const FileQuestion& question) {
    const DWORD usual = kUsual | (question.opens ? OFN_FILEMUSTEXIST : OFN_OVERWRITEPROMPT);
    const DWORD flags = question.flags ? static_cast<DWORD>(question.flags) : usual;
    return (flags | kAlways) & ~kNever;
}

}  // namespace

std::optional<FileChoice> askForFile(const FileQuestion& question) {
    const std::wstring name = fileOf(question.name);
    if (!hasScreen() || name.size() >= kLongestPath) return std::nullopt;
    const std::wstring folder = folderOf(question.name);
    const std::wstring filter = dialogFilter(question.filter);
    const std::wstring extension = defaultExtension(question.filter);
    std::vector<wchar_t> path(kLongestPath, L'\0');
    name.copy(path.data(), name.size());

    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = GetActiveWindow();
    dialog.lpstrFilter = filter.empty() ? nullptr : filter.c_str();
    dialog.lpstrFile = path.data();
    dialog.nMaxFile = static_cast<DWORD>(path.size());
    dialog.lpstrInitialDir = folder.empty() ? nullptr : folder.c_str();
    dialog.lpstrTitle = question.title.empty() ? nullptr : question.title.c_str();
    dialog.lpstrDefExt = extension.empty() ? nullptr : extension.c_str();
    dialog.Flags = flagsFor(question);
    const BOOL chosen = question.opens ? GetOpenFileNameW(&dialog) : GetSaveFileNameW(&dialog);
    if (!chosen) return std::nullopt;
    return FileChoice{path.data(), static_cast<long>(dialog.Flags)};
}

FileChoice askForFile(IDispatch* control, const FileQuestion& question) {
    LateBound dialog(control);
    const auto put = [&](const wchar_t* property, const std::wstring& value) {
        if (!value.empty()) dialog.put(property, Variant(std::wstring_view(value)));
    };
    put(L"DialogTitle", question.title);
    put(L"FileName", question.name);
    put(L"Filter", question.filter);
    if (question.flags) dialog.put(L"Flags", Variant(question.flags));
    // To cancel is then an error.
    dialog.put(L"CancelError", converted(Variant(1L), VT_BOOL));
    dialog.run(question.opens ? L"ShowOpen" : L"ShowSave");
    return {textOf(dialog.get(L"FileName")), converted(dialog.get(L"Flags"), VT_I4).lVal};
}

}  // namespace vela
