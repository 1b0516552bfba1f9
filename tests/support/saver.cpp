// A program for the tests to run, and to kill.
//
//     vela_saver FILE USER ROUNDS EVENT
//
// Saves a section ROUNDS times or, at 0, until it is killed; in each round all its values are the
// round's number. Sets the event after the first round. Exits with 0, or with 1 when a save failed.
#include <windows.h>

#include <shellapi.h>

#include "preferences/Section.h"
#include "preferences/xml_up.h"

namespace vela {
namespace {

bool save(const std::wstring& file, const std::wstring& user, int round) {
    const auto section = makeSection(kKVSection);
    ComPtr<_UPItems> items;
    check(section->get_Items(&items));
    for (int i = 0; i < 200; ++i) {
        ComPtr<IDispatch> item;
        check(section->CreateItem(&item));
        putProperty(item.Get(), L"Value", Variant(std::to_wstring(round)));
        check(items->Add(item.GetAddressOf(), Bstr(L"K" + std::to_wstring(i)).get(),
                         Bstr(L"G").get()));
    }
    return XMLup().saveIntoFile(file, L"SALES", user, section.Get());
}

bool saveRounds(wchar_t** arguments) {
    const int rounds = _wtoi(arguments[3]);
    for (int round = 1; rounds == 0 || round <= rounds; ++round) {
        if (!save(arguments[1], arguments[2], round)) return false;
        if (round == 1) SetEvent(OpenEventW(EVENT_MODIFY_STATE, FALSE, arguments[4]));
    }
    return true;
}

}  // namespace
}  // namespace vela

int main() {
    int count = 0;
    wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    bool done = false;
    CoInitialize(nullptr);
    if (count == 5) vela::quietly([&] { done = vela::saveRounds(arguments); });
    CoUninitialize();
    return done ? 0 : 1;
}
