#include "runtime/message_window.h"

#include "automation/error.h"

namespace vela {

// A window class of the platform's: one of our own would have to go with this module.
MessageWindow::MessageWindow(MessageHandler& handler, const wchar_t* name, Kind kind)
    : window_(CreateWindowExW(0, L"STATIC", name, 0, 0, 0, 0, 0,
                              kind == Kind::Private ? HWND_MESSAGE : nullptr, nullptr, nullptr,
                              nullptr)) {
    if (!window_) raiseLastError();
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&handler));
    SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(receive));
}

MessageWindow::~MessageWindow() {
    SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
    SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(DefWindowProcW));
    if (!DestroyWindow(window_)) PostMessageW(window_, WM_CLOSE, 0, 0);
}

LRESULT CALLBACK MessageWindow::receive(HWND window, UINT message, WPARAM first, LPARAM second) {
    auto* handler = reinterpret_cast<MessageHandler*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    bool handled = false;
    if (handler) quietly([&] { handled = handler->handle(message, first, second); });
    return handled ? 0 : DefWindowProcW(window, message, first, second);
}

void raiseLastError() {
    check(HRESULT_FROM_WIN32(GetLastError()));
    raise(RuntimeError::InvalidProcedureCall);
}

}  // namespace vela
