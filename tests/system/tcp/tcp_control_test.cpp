// cTCP and the control that a client hands to it: what the control is asked for, in which order,
// and when it is let go.
#include "system/tcp/fake_control.h"
#include "system/tcp/tcp_support.h"

namespace vela {
namespace {

using test::arg;
using test::FakeControl;

class SystemTcpControl : public test::NoObjectsLeft {
  protected:
    const ComPtr<FakeControl> control_ = adopted(new FakeControl);
};

TEST_F(SystemTcpControl, IsAskedInOrder) {
    test::Endpoint endpoint(L"f:");
    endpoint.attach(control_.Get());
    EXPECT_EQ(control_->log(), L"");
    endpoint.initialise(5, 6, L"h");
    EXPECT_EQ(control_->log(), L"Close LocalPort=5 RemotePort=6 RemoteHost=h Close ");
    endpoint.listen();
    EXPECT_EQ(control_->log(), L"Close Listen ");
    endpoint.send(L"hello");
    EXPECT_EQ(control_->log(), L"Connect:h:6 ");
    control_->values[L"State"] = Variant(7L);
    endpoint.send(L"hello");
    EXPECT_EQ(control_->log(), L"Close Connect:h:6 ");
    control_->raise(L"Connect");
    EXPECT_EQ(control_->log(), L"SendData:f:hello ");
    EXPECT_FALSE(endpoint.sent());
    control_->raise(L"SendProgress", {arg(1L), arg(2L)});
    EXPECT_EQ(endpoint.log(), L"");
    control_->raise(L"SendComplete");
    EXPECT_TRUE(endpoint.sent());
    EXPECT_EQ(endpoint.log(), L"MsgEnviada ");

    // Scripts put the object by value, and leave arguments out.
    test::call(endpoint.tcp.Get(), L"TcpCom", {arg(control_.Get())}, DISPATCH_PROPERTYPUT);
    test::call(endpoint.tcp.Get(), L"EnviarMsg", {Variant(L"x"), arg(9L), arg(8L)});
    EXPECT_EQ(control_->log(), L"Close LocalPort=9 RemotePort=8 RemoteHost= Close Connect::8 ");
    EXPECT_EQ(endpoint.tcp->Inicializar(nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(control_->log(), L"Close LocalPort=0 RemotePort=0 RemoteHost= Close ");
}

TEST_F(SystemTcpControl, GivesMessagesThatCarryTheFilter) {
    const struct {
        const wchar_t* filter;
        const wchar_t* data;
        const wchar_t* heard;
    } cases[] = {
        {L"f:", L"f:hello", L"Mensagem:hello:h:10.0.0.7 "},
        {L"f:", L"f:", L"Mensagem::h:10.0.0.7 "},
        {L"f:", L"F:hello", L""},
        {L"f:", L"f", L""},
        {L"", L"f:hello", L"Mensagem:f:hello:h:10.0.0.7 "},
    };
    for (const auto& c : cases) {
        test::Endpoint endpoint(c.filter);
        endpoint.attach(control_.Get());
        endpoint.initialise(5, 6, L"h");
        control_->values[L"State"] = Variant(2L);
        control_->log();
        control_->raise(L"ConnectionRequest", {arg(42L)});
        EXPECT_EQ(control_->log(), L"Close Accept:42 ");
        control_->values[L"GetData"] = Variant(c.data);
        control_->raise(L"DataArrival", {arg(1L)});
        EXPECT_EQ(control_->log(), L"GetData:8 Close Listen ");
        EXPECT_EQ(endpoint.log(), c.heard) << testing::PrintToString(std::wstring(c.data));
    }
}

TEST_F(SystemTcpControl, ReportsItsErrorsAndListensOn) {
    test::Endpoint endpoint;
    endpoint.attach(control_.Get());
    VARIANT_BOOL cancelDisplay = VARIANT_FALSE;
    VARIANT cancel{};
    cancel.vt = VT_BYREF | VT_BOOL;
    cancel.pboolVal = &cancelDisplay;
    const auto fail = [&] {
        control_->raise(L"Error", {arg(short{10060}), Variant(L"text"), arg(-7L), Variant(L"there"),
                                   Variant(L""), arg(0L), cancel});
    };
    fail();
    EXPECT_EQ(endpoint.log(), L"Erro:10060:text:-7:there ");
    EXPECT_TRUE(isTrue(cancelDisplay));
    VARIANT null{};
    null.vt = VT_NULL;
    control_->raise(L"Error", {arg(short{7}), null});  // what is there of it
    EXPECT_EQ(endpoint.log(), L"Erro:7::0: ");
    control_->raise(L"Close");
    EXPECT_EQ(control_->log(), L"");
    // With somebody accepted who says nothing, the listener goes on.
    control_->raise(L"ConnectionRequest", {arg(1L)});
    fail();
    EXPECT_EQ(control_->log(), L"Accept:1 Close Listen ");
    control_->raise(L"ConnectionRequest", {arg(2L)});
    control_->raise(L"Close");
    EXPECT_EQ(control_->log(), L"Accept:2 Close Listen ");
    control_->raise(L"ConnectionRequest");  // without its argument
    EXPECT_EQ(control_->log(), L"");
}

TEST_F(SystemTcpControl, ReportsWhatItsMembersRaise) {
    test::Endpoint endpoint;
    endpoint.attach(control_.Get());
    const struct {
        const wchar_t* member;
        std::function<void()> act;
        const wchar_t* asked;
    } cases[] = {
        {L"Listen", [&] { endpoint.listen(); }, L"Close Listen "},
        // And does not connect somewhere else.
        {L"LocalPort", [&] { endpoint.send(L"x", 5); }, L"Close LocalPort=5 "},
        {L"Accept", [&] { control_->raise(L"ConnectionRequest", {arg(3L)}); },
         L"Accept:3 Close Listen "},
        {L"GetData", [&] { control_->raise(L"DataArrival", {arg(1L)}); },
         L"GetData:8 Close Listen "},
    };
    for (const auto& c : cases) {
        control_->failing = c.member;
        c.act();
        EXPECT_EQ(control_->log(), c.asked);
        EXPECT_EQ(endpoint.log(), L"Erro:10048:no:-2146818240:fake ");
    }
}

TEST_F(SystemTcpControl, IsLetGo) {
    const auto second = adopted(new FakeControl);
    {
        test::Endpoint endpoint;
        endpoint.attach(control_.Get());
        // What is no socket control changes nothing.
        EXPECT_EQ(endpoint.tcp->putref_TcpCom(endpoint.tcp.Get()),
                  static_cast<HRESULT>(0x800A000D));
        control_->raise(L"SendComplete");
        EXPECT_EQ(endpoint.log(), L"MsgEnviada ");
        endpoint.attach(second.Get());
        control_->raise(L"SendComplete");
        EXPECT_EQ(endpoint.log(), L"");
        EXPECT_EQ(control_->AddRef(), 2u);  // held by this test alone
        control_->Release();
        endpoint.attach(nullptr);
        second->raise(L"SendComplete");
        EXPECT_EQ(endpoint.log(), L"");
        EXPECT_EQ(endpoint.state(), 0);  // of a socket of the library's own

        // From within an event, and heard no more then.
        endpoint.attach(control_.Get());
        endpoint.onEvent = [&] {
            endpoint.attach(second.Get());
            control_->raise(L"SendComplete");
        };
        control_->raise(L"DataArrival", {arg(1L)});
        EXPECT_EQ(endpoint.log(), L"Mensagem:::10.0.0.7 ");
        EXPECT_EQ(control_->log(), L"GetData:8 ");
        EXPECT_EQ(second->log(), L"");
    }
    EXPECT_EQ(second->log(), L"Close ");
    EXPECT_EQ(control_->log(), L"");

    // With the last reference to the object.
    test::Endpoint endpoint;
    endpoint.attach(control_.Get());
    endpoint.onEvent = [&] { endpoint.tcp.Reset(); };
    control_->raise(L"DataArrival", {arg(1L)});
    EXPECT_EQ(control_->log(), L"GetData:8 Close Listen Close ");
    EXPECT_EQ(control_->AddRef(), 2u);
    control_->Release();
}

}  // namespace
}  // namespace vela
