// What programs lose that forget StopUPM, by the ways in which they end: each has saved a value,
// let more time go by than what is unsaved is kept waiting, and saved another one in its place.
#include <memory>
#include <vector>

#include "support/child_process.h"
#include "support/support.h"

namespace vela::test {
namespace {

// What is kept for certain.
enum class Kept {
    Late,  // everything
    Early  // what had been unsaved for two seconds
};

// The window of a process that is told of the end of the platform's session. It is made when the
// process is in its message loop.
HWND hiddenWindowOf(DWORD process) {
    HWND window = nullptr;
    DWORD owner = 0;
    do {
        window = FindWindowExW(nullptr, window, nullptr, L"Preferences to be saved");
        GetWindowThreadProcessId(window, &owner);
    } while (window && owner != process);
    return window;
}

// Waits ten seconds at most.
LRESULT answer(HWND window, UINT message, WPARAM first) {
    DWORD_PTR answer = 0;
    EXPECT_TRUE(SendMessageTimeoutW(window, message, first, 0, SMTO_NORMAL, 10000, &answer));
    return static_cast<LRESULT>(answer);
}

// A program that never stops its preferences, and what its documents hold in the end.
class Forgetful {
  public:
    Forgetful(const std::wstring& waiting, const std::wstring& ending, Kept kept)
        : waiting_(waiting), ending_(ending), kept_(kept) {}

    // A script says so.
    bool hasBegun() const {
        const std::wstring sign = folder_.path(L"begun.txt");
        for (int i = 0; i < 1000; ++i) {
            if (GetFileAttributesW(sign.c_str()) != INVALID_FILE_ATTRIBUTES) return true;
            Sleep(10);
        }
        return false;
    }
    void checkEnd() {
        SCOPED_TRACE(ending_.c_str());
        SCOPED_TRACE(waiting_.c_str());
        if (ending_ == L"session" || ending_.starts_with(L"TerminateProcess")) endIt();
        EXPECT_TRUE(process_.ended(30000));
        checkDocument(L"shared.xml");
        if (isScript()) checkDocument(L"own.xml");
    }

  private:
    bool isScript() const { return waiting_ == L"script"; }
    std::wstring line() const {
        if (isScript()) {
            return L"cscript //nologo " VELA_ROOT "/tests/clients/forgotten_stop.vbs \"" +
                   folder_.path(L".") + L"\" \"" + ending_ + L"\" 4000";
        }
        return L"vela_ending.exe \"" + folder_.path(L"shared.xml") + L"\" " + waiting_ + L" \"" +
               ending_ + L"\" " + eventName_;
    }
    void endIt() {
        EXPECT_TRUE(saved_.isSetSoon());
        if (ending_ == L"session") endSession();
        process_.kill();
    }
    void endSession() const {
        HWND window = nullptr;
        for (int i = 0; i < 1000 && !(window = hiddenWindowOf(process_.id())); ++i) Sleep(10);
        ASSERT_TRUE(window);
        EXPECT_TRUE(answer(window, WM_QUERYENDSESSION, 0));
        answer(window, WM_ENDSESSION, TRUE);
    }
    void checkDocument(const wchar_t* name) const {
        const std::string text = readFile(folder_.path(name));
        const bool late = text.find("value=\"late\"") != text.npos;
        const bool early = text.find("value=\"early\"") != text.npos;
        EXPECT_TRUE(late || (early && kept_ == Kept::Early)) << text;
    }

    const std::wstring waiting_, ending_;
    const Kept kept_;
    const TemporaryFolder folder_;
    const std::wstring eventName_ = L"vela-ending-" + std::to_wstring(GetCurrentProcessId()) +
                                    L"-" + std::to_wstring(reinterpret_cast<std::uintptr_t>(this));
    const NamedEvent saved_{eventName_};
    ChildProcess process_{line()};
};

TEST(PreferencesEndings, KeepWhatTheyCan) {
    constexpr struct {
        const wchar_t* ending;
        Kept kept;
    } programs[] = {{L"TerminateProcess", Kept::Early},
                    {L"TerminateProcess when idle", Kept::Early},
                    {L"ExitProcess", Kept::Early},
                    {L"return", Kept::Early},
                    {L"return after CoUninitialize", Kept::Late},
                    {L"thread", Kept::Early},
                    {L"thread after CoUninitialize", Kept::Late},
                    {L"session", Kept::Late}},
      scripts[] = {{L"last line", Kept::Late},
                   {L"error", Kept::Late},
                   {L"holding on", Kept::Late},
                   {L"quit", Kept::Early}};
    std::vector<std::unique_ptr<Forgetful>> all;
    // One after the other: of Wine's script hosts that start at once, some do nothing.
    for (const auto& [ending, kept] : scripts) {
        all.push_back(std::make_unique<Forgetful>(L"script", ending, kept));
        ASSERT_TRUE(all.back()->hasBegun());
    }
    for (const auto& [ending, kept] : programs) {
        for (const wchar_t* waiting : {L"loop", L"call"}) {
            all.push_back(std::make_unique<Forgetful>(waiting, ending, kept));
        }
    }
    // The session ends before two seconds are over.
    for (auto each = all.rbegin(); each != all.rend(); ++each) (*each)->checkEnd();
}

}  // namespace
}  // namespace vela::test
