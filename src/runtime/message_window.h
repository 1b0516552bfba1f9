// A window that nobody sees, through which a thread's message loop reaches an object.
#pragma once

#include <windows.h>

namespace vela {

class MessageHandler {
  public:
    // Whether the message was meant for the handler; the platform gets the others. What it throws
    // is dropped. It may destroy the window.
    virtual bool handle(UINT message, WPARAM first, LPARAM second) = 0;

  protected:
    ~MessageHandler() = default;
};

// Belongs to the thread that makes it. Destroyed on another one, it gets no more messages, and goes
// when its own thread next looks for some. The handler must outlive it.
class MessageWindow {
  public:
    enum class Kind {
        Private,  // gets what is sent to itself
        TopLevel  // gets what the platform tells all programs, too, such as the end of the session
    };
    // `name` is what debugging tools show. Throws Error when the platform has no window to give.
    MessageWindow(MessageHandler& handler, const wchar_t* name, Kind kind = Kind::Private);
    MessageWindow(const MessageWindow&) = delete;
    MessageWindow& operator=(const MessageWindow&) = delete;
    ~MessageWindow();

    HWND get() const { return window_; }

  private:
    static LRESULT CALLBACK receive(HWND window, UINT message, WPARAM first, LPARAM second);

    const HWND window_;
};

// Throws what GetLastError() tells.
[[noreturn]] void raiseLastError();

}  // namespace vela
