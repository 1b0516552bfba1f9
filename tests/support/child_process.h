// A program that a test runs beside itself.
#pragma once

#include <string>

#include "runtime/handles.h"

namespace vela::test {

// Killed at its owner's end, if it still runs then.
class ChildProcess {
  public:
    explicit ChildProcess(std::wstring line) {
        STARTUPINFOW start{};
        start.cb = sizeof start;
        PROCESS_INFORMATION made{};
        if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                            &start, &made)) {
            return;
        }
        id_ = made.dwProcessId;
        process_.reset(made.hProcess);
        KernelHandle(made.hThread).reset();
    }
    ~ChildProcess() { kill(); }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    DWORD id() const { return id_; }  // 0 when it could not be started
    HANDLE handle() const { return process_.get(); }
    void kill() {
        TerminateProcess(handle(), 9);
        ended(10000);
    }
    bool ended(DWORD patience) const {  // in ms
        return WaitForSingleObject(handle(), patience) == WAIT_OBJECT_0;
    }
    // Waits a minute at most; STILL_ACTIVE when it runs longer.
    DWORD exitCode(DWORD patience = 60000) const {
        DWORD code = STILL_ACTIVE;
        if (ended(patience)) GetExitCodeProcess(handle(), &code);
        return code;
    }

  private:
    DWORD id_ = 0;
    KernelHandle process_;
};

// An event that a child process can set, or wait for, by its name.
class NamedEvent {
  public:
    explicit NamedEvent(const std::wstring& name)
        : event_(CreateEventW(nullptr, TRUE, FALSE, name.c_str())) {}

    void set() const { SetEvent(event_.get()); }
    void reset() const { ResetEvent(event_.get()); }
    // False after half a minute in vain.
    bool isSetSoon() const { return WaitForSingleObject(event_.get(), 30000) == WAIT_OBJECT_0; }

  private:
    KernelHandle event_;
};

}  // namespace vela::test
