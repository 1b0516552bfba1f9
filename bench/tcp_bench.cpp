// Messages, one connection each: two objects of the library in one message loop, against a bare
// Winsock program that connects, sends, receives and closes as often, with a thread for the
// receiver.
#include <winsock2.h>

#include <thread>

#include "bench/client.h"
#include "bench/tables.h"
#include "examples/client.h"

namespace bench {

namespace {

constexpr int kMessages = 1'000;
const std::string kText = "orders: 4711 was shipped";

// Counts messages.
class Events : public Callback<__cTCP> {
  public:
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*,
                                     EXCEPINFO*, UINT*) override {
        constexpr DISPID kMensagem = 1;
        constexpr DISPID kErro = 3;
        if (id == kMensagem) ++messages;
        if (id == kErro) require(E_FAIL, "a message");
        return S_OK;
    }

    int messages = 0;
};

class Pair {
  public:
    Pair() {
        require(receiver_->put_FiltroDeMensagens(filter_), "the filter");
        require(sender_->put_FiltroDeMensagens(filter_), "the filter");
        VARIANT_BOOL listening = VARIANT_FALSE;
        require(receiver_->IniciarEscuta(&listening), "listening");
        LONG port = 0;
        require(receiver_->get_portaLocal(&port), "listening");
        require(sender_->Inicializar(nullptr, &port, &host_.value), "initialising");
    }

    void exchange() {
        VARIANT_BOOL started = VARIANT_FALSE;
        const int before = events_.messages;
        require(sender_->EnviarMsg(text_, nullptr, nullptr, nullptr, &started), "sending");
        MSG message;
        while (events_.messages == before && GetMessageW(&message, nullptr, 0, 0) > 0) {
            DispatchMessageW(&message);
        }
    }

  private:
    Events events_;
    Text host_{L"127.0.0.1"};
    Text filter_{L"orders:"};
    Text text_{L" 4711 was shipped"};
    ComPtr<_cTCP> receiver_ = create<_cTCP>(L"VelaUtil10.cTCP");
    ComPtr<_cTCP> sender_ = create<_cTCP>(L"VelaUtil10.cTCP");
    Connection<__cTCP> connection_{receiver_.Get(), events_};
};

class Bare {
  public:
    Bare() {
        WSADATA data;
        WSAStartup(MAKEWORD(2, 2), &data);
        place_.sin_family = AF_INET;
        place_.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        listener_ = ::socket(AF_INET, SOCK_STREAM, 0);
        int size = sizeof place_;
        bind(listener_, reinterpret_cast<sockaddr*>(&place_), size);
        getsockname(listener_, reinterpret_cast<sockaddr*>(&place_), &size);
        if (listen(listener_, SOMAXCONN)) require(E_FAIL, "listening");
        thread_ = std::thread([this] { receive(); });
    }
    ~Bare() {
        closesocket(listener_);
        thread_.join();
        WSACleanup();
    }

    // Until the receiver has read it all and closed its side.
    void exchange() {
        const SOCKET sender = ::socket(AF_INET, SOCK_STREAM, 0);
        if (connect(sender, reinterpret_cast<sockaddr*>(&place_), sizeof place_)) {
            require(E_FAIL, "connecting");
        }
        send(sender, kText.data(), static_cast<int>(kText.size()), 0);
        shutdown(sender, SD_SEND);
        char rest = 0;
        recv(sender, &rest, 1, 0);
        closesocket(sender);
    }

  private:
    // Until the listener is closed.
    void receive() {
        char buffer[1024];
        SOCKET receiver = INVALID_SOCKET;
        while ((receiver = accept(listener_, nullptr, nullptr)) != INVALID_SOCKET) {
            std::size_t total = 0;
            int count = 0;
            while ((count = recv(receiver, buffer, sizeof buffer, 0)) > 0) {
                total += static_cast<std::size_t>(count);
            }
            if (total != kText.size()) require(E_FAIL, "receiving");
            closesocket(receiver);
        }
    }

    sockaddr_in place_{};
    SOCKET listener_ = INVALID_SOCKET;
    std::thread thread_;
};

template <class Side>
auto exchanges(Side& side) {
    return [&side] {
        for (int i = 0; i < kMessages; ++i) side.exchange();
    };
}

}  // namespace

bool tcp() {
    Pair pair;
    Bare bare;
    const auto [ours, theirs] = alternately(exchanges(pair), exchanges(bare), [] {});
    return report("messages over TCP (ours) to bare sockets (theirs)",
                  {{"a message, a connection each", ours / kMessages, theirs / kMessages, 2}});
}

}  // namespace bench
