// Messages through the library's own socket: whole, in order, and whatever the peer does.
#include "system/tcp_support.h"
#include "text/ansi_bytes.h"

namespace vela {
namespace {

using test::Endpoint;
using test::pump;

constexpr wchar_t kHere[] = L"127.0.0.1";

// A socket as any other program has it, connected to `port` of this machine.
class Plain {
  public:
    explicit Plain(LONG port) : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in place{};
        place.sin_family = AF_INET;
        place.sin_port = htons(static_cast<u_short>(port));
        place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        connected = connect(socket_.get(), reinterpret_cast<sockaddr*>(&place), sizeof place) == 0;
        u_long on = 1;
        ioctlsocket(socket_.get(), FIONBIO, &on);
    }
    // As much of it as there is room for.
    void say(const std::string& bytes) {
        send(socket_.get(), bytes.data(), static_cast<int>(bytes.size()), 0);
    }
    void end() { socket_.reset(); }
    void breakOff() {
        const linger now{1, 0};
        setsockopt(socket_.get(), SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&now),
                   sizeof now);
        socket_.reset();
    }
    bool connected = false;

  private:
    SocketHandle socket_;
};

class SystemTcpSocket : public test::NoObjectsLeft {
  protected:
    // A port that is free, or was a moment ago.
    static LONG freePort() {
        Endpoint other;
        return other.listen();
    }

  private:
    const Winsock winsock_;
};

TEST_F(SystemTcpSocket, DeliversMessagesWhole) {
    Endpoint receiver(L"f:");
    Endpoint sender(L"f:");
    const LONG port = receiver.listen();
    EXPECT_EQ(receiver.state(), 2);
    for (const std::size_t size : {0, 1, 1000, 65'536, 1'048'576}) {
        SCOPED_TRACE(size);
        std::wstring message(size, L' ');
        for (std::size_t i = 0; i < size; ++i) message[i] = wchar_t(L'!' + i % 90);
        sender.initialise(0, port, kHere);
        sender.send(message);
        EXPECT_FALSE(sender.sent());
        ASSERT_TRUE(pump([&] { return receiver.heard() && sender.heard(); }));
        EXPECT_TRUE(receiver.log() == L"Mensagem:" + message + L":127.0.0.1:127.0.0.1 ");
        EXPECT_EQ(sender.log(), L"MsgEnviada ");
        EXPECT_TRUE(sender.sent());
        EXPECT_EQ(receiver.state(), 2);
        ASSERT_TRUE(pump([&] { return sender.state() == 8; }));
    }
}

TEST_F(SystemTcpSocket, SendsTheBytesOfTheCodePage) {
    Endpoint receiver(L"f:");
    Endpoint sender(L"f:");
    sender.initialise(0, receiver.listen(), L"localhost");
    sender.send(L"a\u00E7\u00E3o \u4E00");
    EXPECT_EQ(sender.state(), 4);
    ASSERT_TRUE(pump([&] { return receiver.heard(); }));
    const std::wstring received = ansiText(ansiBytes(L"a\u00E7\u00E3o \u4E00"));
    EXPECT_EQ(receiver.log(), L"Mensagem:" + received + L":127.0.0.1:127.0.0.1 ");
}

TEST_F(SystemTcpSocket, ServesOneAfterTheOther) {
    Endpoint receiver;
    const LONG port = receiver.listen();
    Plain silent(port);
    ASSERT_TRUE(pump([&] { return receiver.state() == 7; }));
    Plain second(port);
    Plain third(port);
    EXPECT_TRUE(second.connected && third.connected);
    for (Plain* peer : {&second, &third}) peer->say("x"), peer->end();
    pump([] { return false; }, 50);
    EXPECT_EQ(receiver.log(), L"");
    silent.end();
    int messages = 0;
    receiver.onEvent = [&] { ++messages; };
    EXPECT_TRUE(pump([&] { return messages == 2; }));
    EXPECT_EQ(receiver.log(), L"Mensagem:x:127.0.0.1:127.0.0.1 Mensagem:x:127.0.0.1:127.0.0.1 ");
}

TEST_F(SystemTcpSocket, FreesItsPortWhenAnEventEndsWithoutListening) {
    const auto socket = make<Socket>();
    Endpoint receiver;
    receiver.attach(socket.Get());
    const LONG port = receiver.listen();
    receiver.onEvent = [&] {
        receiver.attach(nullptr);
        EXPECT_EQ(socket->Close(), S_OK);
    };
    Plain peer(port);
    peer.say("x"), peer.end();
    ASSERT_TRUE(pump([&] { return receiver.heard(); }));
    EXPECT_FALSE(Plain(port).connected);
}

// A peer keeps its side open and says more while a handler of its message waits for somebody.
TEST_F(SystemTcpSocket, LeavesAHandlerWithANestedLoopAlone) {
    Endpoint receiver;
    const LONG port = receiver.listen();
    Plain talker(port);
    talker.say("one");
    bool first = true;
    receiver.onEvent = [&] {
        if (!std::exchange(first, false)) return;
        talker.say("two");
        pump([] { return false; }, 600);
        EXPECT_EQ(receiver.state(), 7);
    };
    ASSERT_TRUE(pump([&] { return receiver.state() == 2 && receiver.heard(); }));
    EXPECT_EQ(receiver.log(), L"Mensagem:one:127.0.0.1:127.0.0.1 ");
}

TEST_F(SystemTcpSocket, LeavesFromItsLocalPortAgainAndAgain) {
    Endpoint receiver;
    Endpoint sender;
    LONG remote = receiver.listen();
    LONG local = freePort();
    Bstr host(kHere);
    for (int i = 0; i < 3; ++i) {
        VARIANT_BOOL result = VARIANT_FALSE;
        BSTR name = host.get();
        ASSERT_EQ(sender.tcp->EnviarMsg(Bstr(L"x").get(), &local, &remote, &name, &result), S_OK);
        ASSERT_TRUE(pump([&] { return receiver.heard() && sender.heard(); }));
        EXPECT_EQ(receiver.log(), L"Mensagem:x:127.0.0.1:127.0.0.1 ");
        EXPECT_EQ(sender.log(), L"MsgEnviada ");
    }
}

TEST_F(SystemTcpSocket, OutlivesWhateverAPeerDoes) {
    // As handed in by a client, with limits that a test can wait for.
    SocketLimits limits;
    limits.silence = 200;
    limits.pause = 100;
    limits.longest = 1'000;
    Endpoint receiver(L"f:");
    receiver.attach(make<Socket>(limits).Get());
    const LONG port = receiver.listen();
    const std::string large(std::size_t{5} << 20, 'x');
    const struct {
        const char* name;
        std::function<void(Plain&)> act;
        const wchar_t* heard;
    } cases[] = {
        {"keeps its side open", [](Plain& peer) { peer.say("f:kept"); },
         L"Mensagem:kept:127.0.0.1:127.0.0.1 "},
        {"comes in pieces",
         [](Plain& peer) {
             peer.say("f");
             pump([] { return false; }, 30);
             peer.say(":piec");
             pump([] { return false; }, 30);
             peer.say("es");
             peer.end();
         },
         L"Mensagem:pieces:127.0.0.1:127.0.0.1 "},
        {"has no filter", [](Plain& peer) { peer.say("g:no"), peer.end(); }, L""},
        {"ends at once", [](Plain& peer) { peer.end(); }, L""},
        {"says nothing", [](Plain&) {},
         L"Erro:10060:The connection timed out:-2146818228:VelaUtil10 "},
        {"resets",
         [](Plain& peer) {
             peer.say("f:part");
             peer.breakOff();
         },
         L"Erro:10054:The connection was reset by the remote side:-2146818234:VelaUtil10 "},
        {"says too much",
         [&](Plain& peer) { pump([&] { return peer.say(large), receiver.heard(); }); },
         L"Erro:10040:The message is too long:-2146818248:VelaUtil10 "},
        {"never comes to an end",
         [&](Plain& peer) { pump([&] { return peer.say("f:"), receiver.heard(); }); },
         L"Erro:10060:The connection timed out:-2146818228:VelaUtil10 "},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Plain peer(port);
        ASSERT_TRUE(peer.connected);
        ASSERT_TRUE(pump([&] { return receiver.state() != 2 || receiver.heard(); }));
        c.act(peer);
        ASSERT_TRUE(pump([&] { return receiver.state() == 2; }));
        EXPECT_EQ(receiver.log(), c.heard);
    }
}

TEST_F(SystemTcpSocket, ReportsWhatFails) {
    Endpoint taken;
    const LONG port = taken.listen();
    const auto listenAt = [](LONG local) {
        return [local](Endpoint& endpoint) {
            endpoint.initialise(local);
            endpoint.listen();
        };
    };
    const auto sendTo = [](LONG remote, const wchar_t* host) {
        return [remote, host](Endpoint& endpoint) {
            endpoint.initialise(0, remote, host);
            endpoint.send(L"x");
        };
    };
    const struct {
        std::function<void(Endpoint&)> act;
        const wchar_t* heard;
        SHORT state;
    } cases[] = {
        {listenAt(port), L"Erro:10048:Address in use:-2146818240:VelaUtil10 ", 0},
        {sendTo(freePort(), kHere),
         L"Erro:10061:The connection was refused:-2146818227:VelaUtil10 ", 9},
        {sendTo(port, L""), L"Erro:10049:Address is not available:-2146818239:VelaUtil10 ", 0},
        {sendTo(port, L"no host of this name.invalid"),
         L"Erro:11001:The host was not found:-2146817287:VelaUtil10 ", 9},
        {[](Endpoint& endpoint) { endpoint.initialise(65'536); },
         L"Erro:5:Invalid procedure call or argument:-2146828283:VelaUtil10 ", 0},
        {[](Endpoint& endpoint) { endpoint.initialise(0, -1); },
         L"Erro:5:Invalid procedure call or argument:-2146828283:VelaUtil10 ", 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(c.heard)));
        Endpoint endpoint;
        c.act(endpoint);
        ASSERT_TRUE(pump([&] { return endpoint.heard(); }));
        EXPECT_EQ(endpoint.log(), c.heard);
        EXPECT_EQ(endpoint.state(), c.state);
        EXPECT_FALSE(endpoint.sent());
    }
}

TEST_F(SystemTcpSocket, MayGoAtAnyMoment) {
    LONG port = 0;
    {
        Endpoint receiver;
        port = receiver.listen();
        Endpoint sender;
        sender.initialise(0, port, kHere);
        sender.send(L"lost");
    }
    EXPECT_FALSE(Plain(port).connected);
    {
        Endpoint resolving;
        resolving.initialise(0, port, L"localhost");
        resolving.send(L"lost");
    }
    Endpoint receiver;
    receiver.onEvent = [&] { receiver.attach(nullptr); };
    Plain peer(receiver.listen());
    peer.say("last");
    peer.end();
    ASSERT_TRUE(pump([&] { return receiver.heard(); }));
    EXPECT_EQ(receiver.log(), L"Mensagem:last:127.0.0.1:127.0.0.1 ");
    EXPECT_EQ(receiver.state(), 0);
    pump([] { return false; }, 50);
}

}  // namespace
}  // namespace vela
