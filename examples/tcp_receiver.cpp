// Receives messages that begin with a filter text, and prints them.
//
//     ./dev wine build/win32/examples/tcp_receiver.exe [PORT [FILTER [COUNT]]]
//
// At port 0, the default, the system chooses one. The filter is "orders:" by default. Ends after
// COUNT messages (1 by default), or after a minute.
#include "tcp_endpoint.h"

namespace {

class Received : public TcpEvents {
  public:
    long count = 0;

  private:
    void message(const std::wstring& text, const std::wstring& address) override {
        std::printf("message %ld from %ls: %ls\n", ++count, address.c_str(), text.c_str());
        std::fflush(stdout);
    }
    void failed(long number, const std::wstring& description) override {
        std::printf("error %ld: %ls\n", number, description.c_str());
        std::fflush(stdout);
    }
};

bool receive(long port, const std::wstring& filter, long count) {
    Received events;
    Endpoint endpoint(events, filter);
    VARIANT_BOOL listening = VARIANT_FALSE;
    check(endpoint->Inicializar(&port, nullptr, nullptr));
    check(endpoint->IniciarEscuta(&listening));
    check(endpoint->get_portaLocal(&port));
    std::printf("Listening on port %ld.\n", port);
    std::fflush(stdout);
    return pumpUntil([&] { return events.count >= count; }, 60'000);
}

}  // namespace

int main() {
    return run([](const std::vector<std::wstring>& given) {
        const long port = given.size() > 0 ? std::stol(given[0]) : 0;
        const std::wstring filter = given.size() > 1 ? given[1] : L"orders:";
        const long count = given.size() > 2 ? std::stol(given[2]) : 1;
        return receive(port, filter, count);
    });
}
