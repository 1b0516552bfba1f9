// A program for the tests to run, which ends in one of several ways without stopping its
// preferences.
//
//     vela_ending DOCUMENT WAITING ENDING EVENT
//
// Saves a value, "early", by the registered library; two and a half seconds later, which it spends
// in a message loop or, where WAITING is "call", without one and with a call thereafter, saves
// "late", unless it is to be idle, sets the event, and ends. Where others end it, it waits for
// that.
#include <windows.h>

#include <shellapi.h>

#include <thread>

#include "support/registered.h"

namespace vela::test {
namespace {

constexpr UINT kLonger = 4000;  // ms; more than what is unsaved is kept waiting

struct Arguments {
    std::wstring document, waiting, ending, event;
};

// Until a timer of the thread's own is due.
void runLoop(UINT time) {
    const UINT_PTR timer = SetTimer(nullptr, 0, time, nullptr);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (message.message == WM_TIMER && message.wParam == timer && !message.hwnd) return;
        DispatchMessageW(&message);
    }
}

void saveBoth(const Arguments& arguments) {
    const Bstr key(L"state"), group(L"general");
    const auto values = got(startedPreferences(arguments.document), &_UPUtil::get_Values);
    check(values->SaveValue(key.get(), group.get(), Bstr(L"early").get()));
    if (arguments.waiting == L"call") {
        Sleep(kLonger);
        Bstr ignored;
        check(values->GetValue(key.get(), group.get(), nullptr, ignored.put()));
    } else {
        runLoop(kLonger);
    }
    if (!arguments.ending.ends_with(L"when idle")) {
        check(values->SaveValue(key.get(), group.get(), Bstr(L"late").get()));
    }
    SetEvent(OpenEventW(EVENT_MODIFY_STATE, FALSE, arguments.event.c_str()));
}

void run(const Arguments& arguments) {
    check(CoInitialize(nullptr));
    saveBoth(arguments);
    const std::wstring& ending = arguments.ending;
    if (ending.ends_with(L"after CoUninitialize")) CoUninitialize();
    if (ending == L"ExitProcess") ExitProcess(0);
    if (ending.starts_with(L"TerminateProcess")) Sleep(INFINITE);
    if (ending == L"session") runLoop(60000);
}

}  // namespace
}  // namespace vela::test

int main() {
    int count = 0;
    wchar_t** given = CommandLineToArgvW(GetCommandLineW(), &count);
    if (count != 5) return 1;
    const vela::test::Arguments arguments{given[1], given[2], given[3], given[4]};
    bool done = false;
    const auto body = [&] { done = vela::quietly([&] { vela::test::run(arguments); }); };
    if (arguments.ending.starts_with(L"thread")) std::thread(body).join();
    else body();
    return done ? 0 : 1;
}
