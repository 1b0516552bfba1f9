// Preferences that are saved in passing.
#include "automation/late_objects.h"
#include "preferences/UPSections.h"
#include "preferences/preferences_support.h"

namespace vela::test {
namespace {

constexpr DWORD kDelay = 2000;        // ms
constexpr DWORD kLongEnough = 20000;  // ms

// Until then, or until `isOver`.
void pump(
    DWORD milliseconds, const std::function<bool()>& isOver = [] { return false; }) {
    const ULONGLONG end = GetTickCount64() + milliseconds;
    for (MSG message; GetTickCount64() < end && !isOver(); Sleep(5)) {
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    }
}

BOOL CALLBACK takeIfSessionWindow(HWND window, LPARAM found) {
    wchar_t name[64];
    GetWindowTextW(window, name, ARRAYSIZE(name));
    const bool isIt = std::wstring_view(name) == L"Preferences to be saved";
    if (isIt) *reinterpret_cast<HWND*>(found) = window;
    return !isIt;
}
// Of this thread.
HWND sessionWindow() {
    HWND found = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), takeIfSessionWindow, reinterpret_cast<LPARAM>(&found));
    return found;
}

class PreferencesInPassing : public NoObjectsLeft {
  protected:
    PreferencesInPassing() { context_->start(L"sales", L"ana"); }

    bool isSaved(const char* value) const {
        return readFile(folder_.path(L"ana.up2.xml")).find(value) != std::string::npos;
    }
    void keep(const wchar_t* value) const { context_->saveValue(L"k", L"g", value); }

    const TemporaryFolder folder_;
    const std::shared_ptr<UPContext> context_ = contextIn(folder_);
};

TEST_F(PreferencesInPassing, ChangesReachTheDiskByTheMessageLoop) {
    // Waits for StartUPM, and is not to be written before it has what is stored.
    const auto other = contextIn(folder_);
    const auto unread = sectionWith(kRPSection, L"", L"unread");
    unread->putref_DataSourceManager(storeOf(context_->manager()->section(L"KV").Get()).Get());
    other->manager()->add(unread);
    const ULONGLONG start = GetTickCount64();
    keep(L"first");
    pump(kDelay / 2);
    keep(L"second");
    EXPECT_TRUE(!isSaved("first") || GetTickCount64() - start >= kDelay);
    pump(kLongEnough, [this] { return isSaved("second"); });
    EXPECT_TRUE(isSaved("second"));
    EXPECT_TRUE(flagOf(context_->manager()->section(L"KV").Get(), &_IUPSection::get_Saved));
    EXPECT_FALSE(isSaved("unread"));
    other->manager()->putref_PreferenceSections(make<UPSections>().Get());
}

TEST_F(PreferencesInPassing, WithoutALoopTheNextCallSaves) {
    keep(L"first");
    Sleep(kDelay + 50);
    EXPECT_FALSE(isSaved("first"));
    keep(L"second");
    EXPECT_TRUE(isSaved("second"));
    // Nothing is in the midst of a call, be it one that lasts, and that has a loop of its own.
    const auto window = adopted(new LateObject);
    window->names = {L"Visible"};
    window->invoked = [&](DISPID, WORD, DISPPARAMS&, VARIANT* result, EXCEPINFO*) {
        keep(L"third");
        pump(kDelay + 300);
        EXPECT_FALSE(isSaved("third"));
        *result = Variant(1L).release();
        return S_OK;
    };
    context_->saveWindowPos(window.Get(), L"w", L"g");
    pump(kLongEnough, [this] { return isSaved("third"); });
    EXPECT_TRUE(isSaved("third"));
}

// Nobody tells of a change in place, which was saved with another one before.
TEST_F(PreferencesInPassing, LaterChangesInPlaceAreSavedAtTheEnd) {
    ComPtr<IDispatch> item;
    const auto section = context_->manager()->section(L"KV");
    EXPECT_EQ(section->CreateItem(&item), S_OK);
    EXPECT_EQ(itemsOf(section.Get())->Add(item.GetAddressOf(), Bstr(L"k").get(), nullptr), S_OK);
    context_->manager()->saveInPassing();
    EXPECT_TRUE(flagOf(section.Get(), &_IUPSection::get_Saved));
    putProperty(item.Get(), L"Value", Variant(L"changed"));
    context_->stop();
    EXPECT_TRUE(isSaved("changed"));
}

TEST_F(PreferencesInPassing, TheEndOfTheSessionSaves) {
    keep(L"first");
    pump(kLongEnough, [] { return sessionWindow() != nullptr; });
    const HWND window = sessionWindow();
    ASSERT_TRUE(window);
    SendMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_EQ(SendMessageW(window, WM_QUERYENDSESSION, 0, 0), TRUE);
    SendMessageW(window, WM_ENDSESSION, FALSE, 0);
    EXPECT_FALSE(isSaved("first"));
    SendMessageW(window, WM_ENDSESSION, TRUE, 0);
    EXPECT_TRUE(isSaved("first"));
}

}  // namespace
}  // namespace vela::test
