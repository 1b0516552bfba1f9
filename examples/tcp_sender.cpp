// Sends messages to the receiver, a program of its own, which it starts.
//
//     ./dev wine build/win32/examples/tcp_sender.exe
//
// To a receiver that runs already, anywhere: tcp_sender.exe HOST PORT TEXT [FILTER]
#include "tcp_endpoint.h"

namespace {

constexpr DWORD kPatience = 20'000;  // milliseconds

class Sent : public TcpEvents {
  public:
    bool done = false;
    long error = 0;

  private:
    void sent() override { done = true; }
    void failed(long number, const std::wstring&) override { error = number; }
};

// A receiver takes one connection at a time and refuses others meanwhile: those try again.
bool send(const std::wstring& host, long port, const std::wstring& text,
          const std::wstring& filter) {
    Sent events;
    Endpoint endpoint(events, filter);
    Text name(host);
    check(endpoint->Inicializar(nullptr, &port, name.inOut()));
    for (int attempt = 0; attempt < 50 && !events.done; ++attempt) {
        VARIANT_BOOL started = VARIANT_FALSE;
        events.error = 0;
        check(endpoint->EnviarMsg(Text(text).in(), nullptr, nullptr, nullptr, &started));
        pumpUntil([&] { return events.done || events.error != 0; }, kPatience);
        if (events.error != 0 && events.error != WSAECONNREFUSED) break;
        if (events.error != 0) pumpUntil([] { return false; }, 100);
    }
    std::printf("%ls: %s\n", text.c_str(), events.done ? "sent" : "not sent");
    if (!events.done) std::printf("error %ld\n", events.error);
    std::fflush(stdout);
    return events.done;
}

// The receiver, with what it prints coming through a pipe.
class Receiver {
  public:
    explicit Receiver(std::wstring command) {
        SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
        HANDLE output = nullptr;
        if (!CreatePipe(&output_, &output, &inherited, 0)) throw E_FAIL;
        SetHandleInformation(output_, HANDLE_FLAG_INHERIT, 0);
        STARTUPINFOW start{};
        start.cb = sizeof start;
        start.dwFlags = STARTF_USESTDHANDLES;
        start.hStdOutput = output;
        start.hStdError = output;
        const BOOL started = CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0,
                                            nullptr, nullptr, &start, &process_);
        CloseHandle(output);
        if (!started) throw E_FAIL;
    }
    ~Receiver() {
        CloseHandle(output_);
        CloseHandle(process_.hProcess);
        CloseHandle(process_.hThread);
    }
    // Empty at the end.
    std::string line() {
        std::string read;
        char next = 0;
        DWORD count = 0;
        while (next != '\n' && ReadFile(output_, &next, 1, &count, nullptr) && count == 1) {
            read += next;
        }
        return read;
    }
    bool succeeded() const {
        DWORD code = 1;
        WaitForSingleObject(process_.hProcess, kPatience);
        return GetExitCodeProcess(process_.hProcess, &code) && code == 0;
    }

  private:
    HANDLE output_ = nullptr;
    PROCESS_INFORMATION process_{};
};

// Two messages that the receiver prints, and between them one that it drops.
bool sendToOwnReceiver() {
    Receiver receiver(L"tcp_receiver.exe 0 orders: 2");
    long port = 0;
    if (std::sscanf(receiver.line().c_str(), "Listening on port %ld", &port) != 1) return false;
    const bool sent = send(L"localhost", port, L"4711 was shipped", L"orders:") &&
                      send(L"localhost", port, L"anybody home?", L"chat:") &&
                      send(L"localhost", port, L"4712 was paid", L"orders:");
    if (!sent) return false;
    for (std::string line = receiver.line(); !line.empty(); line = receiver.line()) {
        std::printf("receiver: %s", line.c_str());
    }
    if (!receiver.succeeded()) return false;
    std::printf("Both messages were received.\n");
    return true;
}

}  // namespace

int main() {
    return run([](const std::vector<std::wstring>& given) {
        if (given.size() < 3) return sendToOwnReceiver();
        const std::wstring filter = given.size() > 3 ? given[3] : L"orders:";
        return send(given[0], std::stol(given[1]), given[2], filter);
    });
}
