// A program for the tests to run, and to kill.
//
//     vela_saver save FILE USER SECTION ROUNDS EVENT
//         Saves a section ROUNDS times or, at 0, until it is killed; in each round all its values
//         are the round's number. Sets the event after the first round.
//     vela_saver forget FILE
//         Keeps a value in the shared preferences of the registered library and ends without
//         stopping.
// Exits with 0, or with 1 when something failed.
#include <windows.h>

#include <shellapi.h>

#include "preferences/Section.h"
#include "preferences/XMLup.h"

namespace vela {
namespace {

constexpr int kItems = 200;

bool save(const std::wstring& file, const std::wstring& user, const SectionKind& kind, int round) {
    const auto section = makeSection(kind);
    ComPtr<_UPItems> items;
    check(section->get_Items(&items));
    for (int i = 0; i < kItems; ++i) {
        ComPtr<IDispatch> item;
        check(section->CreateItem(&item));
        const bool isPath = &kind == &kDPSection;
        putProperty(item.Get(), isPath ? L"Path" : L"Value", Variant(std::to_wstring(round)));
        check(items->Add(item.GetAddressOf(), Bstr(L"K" + std::to_wstring(i)).get(),
                         Bstr(L"G").get()));
    }
    return XMLup().saveIntoFile(file, L"SALES", user, section.Get());
}

bool saveRounds(wchar_t** arguments) {
    const SectionKind& kind = std::wstring_view(arguments[2]) == L"DP" ? kDPSection : kKVSection;
    const int rounds = _wtoi(arguments[3]);
    for (int round = 1; rounds == 0 || round <= rounds; ++round) {
        if (!save(arguments[0], arguments[1], kind, round)) return false;
        if (round == 1) SetEvent(OpenEventW(EVENT_MODIFY_STATE, FALSE, arguments[4]));
    }
    return true;
}

void forget(const wchar_t* file) {
    static ComPtr<_UPUtil>& preferences = *new ComPtr<_UPUtil>;
    ComPtr<_Preferences> entry;
    ComPtr<_UPDataSources> sources;
    ComPtr<_UPValueUtil> values;
    Variant started;
    check(CoCreateInstance(ClassOf<_Preferences>::id(), nullptr, CLSCTX_INPROC_SERVER,
                           IID_PPV_ARGS(&entry)));
    check(entry->get_MyPreferences(&preferences));
    check(preferences->get_ActiveDataSources(&sources));
    check(sources->put_SharedSource(Variant(std::wstring_view(file))));
    check(preferences->StartUPM(Bstr(L"sales").get(), Bstr(L"ana").get(), &started));
    check(preferences->get_Values(&values));
    check(values->SaveValue(Bstr(L"K").get(), Bstr(L"G").get(), Bstr(L"kept").get()));
}

int run(int count, wchar_t** arguments) {
    const std::wstring_view verb = count > 2 ? arguments[1] : L"";
    bool done = false;
    if (verb == L"save" && count == 7) quietly([&] { done = saveRounds(arguments + 2); });
    if (verb == L"forget") done = quietly([&] { forget(arguments[2]); });
    return done ? 0 : 1;
}

}  // namespace
}  // namespace vela

int main() {
    int count = 0;
    wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    CoInitialize(nullptr);
    const int result = vela::run(count, arguments);
    CoUninitialize();
    LocalFree(arguments);
    return result;
}
