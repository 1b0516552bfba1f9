// Messages through the library's own socket: whole, in order, and whatever the peer does.
#include "system/tcp/fake_control.h"
#include "system/tcp/tcp_support.h"
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
    bool isEnded() const {
        char byte = 0;
        return recv(socket_.get(), &byte, 1, 0) == 0;
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

    // The event of a message from this machine.
    static std::wstring message(const std::wstring& text) {
        return L"Mensagem:" + text + L":127.0.0.1:127.0.0.1 ";
    }

    static std::wstring error(const std::wstring& said) {
        return L"Erro:" + said + L":VelaUtil10 ";
    }

  private:
    const Winsock winsock_;
};

// From the same local port, as soon as the message before was sent.
TEST_F(SystemTcpSocket, DeliversMessagesWhole) {
    Endpoint receiver(L"f:");
    Endpoint sender(L"f:");
    const LONG port = receiver.listen();
    const LONG local = freePort();
    EXPECT_EQ(receiver.state(), 2);
    std::wstring large(1'048'576, L' ');
    for (std::size_t i = 0; i < large.size(); ++i) large[i] = wchar_t(L'!' + i % 90);
    for (const std::wstring& text :
         {std::wstring(), std::wstring(L"a\u00E7\u00E3o \u4E00"), large}) {
        SCOPED_TRACE(text.size());
        sender.send(text, local, port, L"localhost");
        EXPECT_EQ(sender.state(), 4);
        EXPECT_FALSE(sender.sent());
        ASSERT_TRUE(pump([&] { return receiver.heard() && sender.heard(); }));
        EXPECT_TRUE(receiver.log() == message(ansiText(ansiBytes(text))));
        EXPECT_EQ(sender.log(), L"MsgEnviada ");
        EXPECT_TRUE(sender.sent());
        EXPECT_EQ(receiver.state(), 2);
    }
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
    EXPECT_EQ(receiver.log(), message(L"x") + message(L"x"));
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
    EXPECT_EQ(receiver.log(), message(L"one"));
}

TEST_F(SystemTcpSocket, OutlivesWhateverAPeerDoes) {
    SocketLimits limits;  // that a test can wait for
    limits.silence = 200;
    limits.pause = 100;
    limits.longest = 1'000;
    Endpoint receiver(L"f:", limits);
    const LONG port = receiver.listen();
    const std::string large(std::size_t{5} << 20, 'x');
    const struct {
        const char* name;
        std::function<void(Plain&)> act;
        std::wstring heard;
    } cases[] = {
        {"keeps its side open", [](Plain& peer) { peer.say("f:kept"); }, message(L"kept")},
        {"comes in pieces",
         [](Plain& peer) {
             peer.say("f");
             pump([] { return false; }, 30);
             peer.say(":pieces");
             peer.end();
         },
         message(L"pieces")},
        {"ends at once", [](Plain& peer) { peer.end(); }, L""},
        {"says nothing", [](Plain&) {}, error(L"10060:The connection timed out:-2146818228")},
        {"resets", [](Plain& peer) { peer.say("f:part"), peer.breakOff(); },
         error(L"10054:The connection was reset by the remote side:-2146818234")},
        {"says too much",
         [&](Plain& peer) { pump([&] { return peer.say(large), receiver.heard(); }); },
         error(L"10040:The message is too long:-2146818248")},
        {"never comes to an end",
         [&](Plain& peer) { pump([&] { return peer.say("f:"), receiver.heard(); }); },
         error(L"10060:The connection timed out:-2146818228")},
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
    const std::wstring invalid = L"5:Invalid procedure call or argument:-2146828283";
    const struct {
        std::function<void(Endpoint&)> act;
        std::wstring heard;
        SHORT state;
    } cases[] = {
        {listenAt(port), L"10048:Address in use:-2146818240", 0},
        {sendTo(freePort(), kHere), L"10061:The connection was refused:-2146818227", 9},
        {sendTo(port, L""), L"10049:Address is not available:-2146818239", 0},
        {sendTo(port, L"none.invalid"), L"11001:The host was not found:-2146817287", 9},
        {[](Endpoint& endpoint) { endpoint.initialise(65'536); }, invalid, 0},
        {[](Endpoint& endpoint) { endpoint.initialise(0, -1); }, invalid, 0},
    };
    for (const auto& c : cases) {
        Endpoint endpoint;
        c.act(endpoint);
        ASSERT_TRUE(pump([&] { return endpoint.heard(); }));
        EXPECT_EQ(endpoint.log(), error(c.heard));
        EXPECT_EQ(endpoint.state(), c.state) << testing::PrintToString(c.heard);
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
    // Left in an event, its socket closes at once, and frees the port when the event is over.
    Endpoint receiver;
    port = receiver.listen();
    Plain peer(port);
    peer.say("last");
    receiver.onEvent = [&] {
        receiver.attach(nullptr);
        EXPECT_TRUE(pump([&] { return peer.isEnded(); }));
    };
    ASSERT_TRUE(pump([&] { return receiver.heard(); }));
    EXPECT_FALSE(Plain(port).connected);
    EXPECT_EQ(receiver.log(), message(L"last"));
    EXPECT_EQ(receiver.state(), 0);
}

// Whatever a handler lets go of, nothing more is heard, and the port is free afterwards.
TEST_F(SystemTcpSocket, MayGoInAHandler) {
    const auto control = adopted(new test::FakeControl);
    const std::function<void(Endpoint&)> ways[] = {
        [](Endpoint& told) { told.tcp.Reset(); },
        [](Endpoint& told) { told.attach(nullptr); },
        [&](Endpoint& told) { told.attach(control.Get()); },
    };
    const LONG free = freePort();
    const struct {
        std::function<void(Endpoint& told, Endpoint& other)> begin;
        std::wstring heard;
    } cases[] = {
        {[&](Endpoint& told, Endpoint& other) {
             told.initialise(free);
             told.listen();
             other.initialise(0, free, kHere);
             other.send(L"last");
         },
         message(L"last")},
        {[](Endpoint& told, Endpoint& other) {
             told.initialise(0, other.listen(), kHere);
             told.send(L"x");
         },
         L"MsgEnviada "},
        {[&](Endpoint& told, Endpoint&) {
             told.initialise(0, free, kHere);
             told.send(L"x");
         },
         error(L"10061:The connection was refused:-2146818227")},
    };
    for (const auto& way : ways) {
        for (const auto& c : cases) {
            Endpoint other;
            Endpoint told;
            told.onEvent = [&] {
                way(told);
                pump([] { return false; }, 50);
            };
            c.begin(told, other);
            control->log();  // it was closed with the object before
            Plain waiting(free);
            waiting.say("x");
            ASSERT_TRUE(pump([&] { return told.heard(); }));
            pump([] { return false; }, 50);
            EXPECT_EQ(told.log(), c.heard);
            EXPECT_EQ(control->log(), L"");
            EXPECT_FALSE(Plain(free).connected);
        }
    }
}

TEST_F(SystemTcpSocket, BeginsTheNextMessageInAHandler) {
    Endpoint receiver;
    Endpoint sender;
    sender.initialise(0, receiver.listen(), kHere);
    int sent = 0;
    sender.onEvent = [&] {
        if (++sent < 3) sender.send(L"x");
    };
    int messages = 0;
    receiver.onEvent = [&] { ++messages; };
    sender.send(L"x");
    EXPECT_TRUE(pump([&] { return messages == 3; }));
    EXPECT_EQ(sender.log(), L"MsgEnviada MsgEnviada MsgEnviada ");
}

}  // namespace
}  // namespace vela
