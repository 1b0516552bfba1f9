// Counts how often it was started, in the preferences of application sales and user ana. Bound
// early: the calls go straight to the library's interfaces, as its header declares them.
#include <cwchar>
#include <string>

#include "client.h"

namespace {

int countStarts() {
    ComPtr<_Preferences> library;
    ComPtr<_UPUtil> preferences;
    check(CoCreateInstance(__uuidof(Preferences), nullptr, CLSCTX_INPROC_SERVER,
                           IID_PPV_ARGS(&library)));
    check(library->get_MyPreferences(&preferences));
    VARIANT started{};
    check(preferences->StartUPM(Text(L"sales").in(), Text(L"ana").in(), &started));

    ComPtr<_UPValueUtil> values;
    check(preferences->get_Values(&values));
    const Text key(L"starts");
    const Text group(L"general");
    Text before;
    check(values->GetValue(key.in(), group.in(), Text(L"0").in(), before.out()));
    const int count = 1 + static_cast<int>(std::wcstol(before.in(), nullptr, 10));
    check(values->SaveValue(key.in(), group.in(), Text(std::to_wstring(count)).in()));
    check(preferences->StopUPM());
    return count;
}

}  // namespace

int main() {
    return runInApartment([] { std::printf("Started %d times.\n", countStarts()); });
}
