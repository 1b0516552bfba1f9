// Counts how often it was started, in the preferences of application sales and user ana. Bound
// early: the calls go straight to the library's interfaces, as its header declares them.
#include <windows.h>

#include <VelaUtil10.h>
#include <wrl/client.h>

#include <cstdio>
#include <cwchar>
#include <string>

using Microsoft::WRL::ComPtr;

namespace {

// A text as automation passes it.
class Text {
  public:
    explicit Text(const std::wstring& text = {}) : text_(SysAllocString(text.c_str())) {}
    ~Text() { SysFreeString(text_); }
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;

    BSTR in() const { return text_; }
    // For a member that stores a new text here.
    BSTR* out() {
        SysFreeString(text_);
        text_ = nullptr;
        return &text_;
    }

  private:
    BSTR text_;
};

void check(HRESULT result) {
    if (FAILED(result)) throw result;
}

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
    HRESULT result = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    if (FAILED(result)) return 1;
    try {
        std::printf("Started %d times.\n", countStarts());
    } catch (HRESULT failure) {
        std::fprintf(stderr, "Failed with %08lX.\n", static_cast<unsigned long>(failure));
        result = failure;
    }
    CoUninitialize();
    return FAILED(result) ? 1 : 0;
}
