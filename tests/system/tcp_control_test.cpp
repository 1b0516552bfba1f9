// cTCP and the control that a client hands to it: how the control is found out, what it is asked
// for, in which order, and when it is let go.
#include "system/fake_control.h"
#include "system/tcp_support.h"

namespace vela {
namespace {

using test::arg;
using test::FakeControl;
using test::Tells;

class SystemTcpControl : public test::NoObjectsLeft {
  protected:
    static ComPtr<FakeControl> fake(Tells tells = Tells::Class) {
        return adopted(new FakeControl(tells));
    }
};

TEST_F(SystemTcpControl, IsKnownByWhatItTellsOfItself) {
    for (const Tells tells : {Tells::DefaultSource, Tells::Class, Tells::ConnectionPoints}) {
        SCOPED_TRACE(static_cast<int>(tells));
        const auto control = fake(tells);
        test::Endpoint endpoint;
        endpoint.attach(control.Get());
        control->raise(L"SendComplete");
        control->raise(L"SendProgress", {arg(1L), arg(2L)});
        EXPECT_EQ(endpoint.log(), L"MsgEnviada ");
    }
}

TEST_F(SystemTcpControl, IsAskedInOrder) {
    const auto control = fake();
    test::Endpoint endpoint(L"f:");
    endpoint.attach(control.Get());
    EXPECT_EQ(control->log(), "");
    endpoint.initialise(5, 6, L"h");
    EXPECT_EQ(control->log(), "Close LocalPort=5 RemotePort=6 RemoteHost=h Close ");
    endpoint.listen();
    EXPECT_EQ(control->log(), "Close Listen ");
    endpoint.send(L"hello");
    EXPECT_EQ(control->log(), "Connect:h:6 ");
    control->state = 7;
    endpoint.send(L"hello");
    EXPECT_EQ(control->log(), "Close Connect:h:6 ");
    EXPECT_FALSE(endpoint.sent());
    control->raise(L"Connect");
    EXPECT_EQ(control->log(), "SendData:f:hello ");
    EXPECT_FALSE(endpoint.sent());
    control->raise(L"SendComplete");
    EXPECT_TRUE(endpoint.sent());
    EXPECT_EQ(endpoint.log(), L"MsgEnviada ");

    // Scripts put the object by value, leave arguments out and name them.
    test::call(endpoint.tcp.Get(), L"TcpCom", {arg(control.Get())}, DISPATCH_PROPERTYPUT);
    test::call(endpoint.tcp.Get(), L"EnviarMsg", {arg(Bstr(L"x")), arg(9L), arg(8L)});
    EXPECT_EQ(control->log(), "Close LocalPort=9 RemotePort=8 RemoteHost= Close Connect::8 ");
    EXPECT_EQ(endpoint.tcp->Inicializar(nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(control->log(), "Close LocalPort=0 RemotePort=0 RemoteHost= Close ");
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
        {L"f:", L"hello f:", L""},
        {L"f:", L"f", L""},
        {L"f:", L"", L""},
        {L"", L"f:hello", L"Mensagem:f:hello:h:10.0.0.7 "},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.filter);
        SCOPED_TRACE(c.data);
        const auto control = fake();
        test::Endpoint endpoint(c.filter);
        endpoint.attach(control.Get());
        endpoint.initialise(5, 6, L"h");
        control->state = 2;
        control->log();
        control->raise(L"ConnectionRequest", {arg(42L)});
        EXPECT_EQ(control->log(), "Close Accept:42 ");
        control->data = c.data;
        control->raise(L"DataArrival", {arg(1L)});
        EXPECT_EQ(control->log(), "GetData:8 Close Listen ");
        EXPECT_EQ(endpoint.log(), c.heard);
    }
}

TEST_F(SystemTcpControl, ReportsItsErrorsAndListensOn) {
    const auto control = fake();
    test::Endpoint endpoint;
    endpoint.attach(control.Get());
    VARIANT_BOOL cancelDisplay = VARIANT_FALSE;
    VARIANT cancel{};
    cancel.vt = VT_BYREF | VT_BOOL;
    cancel.pboolVal = &cancelDisplay;
    const Bstr description(L"text");
    const Bstr source(L"there");
    const auto fail = [&] {
        control->raise(L"Error", {arg(short{10060}), arg(description), arg(-7L), arg(source),
                                  arg(Bstr()), arg(0L), cancel});
    };
    fail();
    EXPECT_EQ(endpoint.log(), L"Erro:10060:text:-7:there ");
    EXPECT_TRUE(isTrue(cancelDisplay));
    EXPECT_EQ(control->log(), "");
    control->raise(L"Close");
    EXPECT_EQ(control->log(), "");
    // With somebody accepted who says nothing, the listener goes on.
    control->raise(L"ConnectionRequest", {arg(1L)});
    fail();
    EXPECT_EQ(control->log(), "Accept:1 Close Listen ");
    control->raise(L"ConnectionRequest", {arg(2L)});
    control->raise(L"Close");
    EXPECT_EQ(control->log(), "Accept:2 Close Listen ");
    endpoint.log();

    // What its members raise.
    control->failing = "Listen";
    endpoint.listen();
    EXPECT_EQ(endpoint.log(), L"Erro:10048:no:-2146818240:fake ");
    control->failing = "LocalPort";
    LONG port = 5;
    VARIANT_BOOL result = VARIANT_FALSE;
    control->log();
    EXPECT_EQ(endpoint.tcp->EnviarMsg(nullptr, &port, nullptr, nullptr, &result), S_OK);
    EXPECT_TRUE(isTrue(result));
    EXPECT_EQ(control->log(), "Close LocalPort=5 ");  // and does not connect somewhere else
    control->failing = "Accept";
    endpoint.log();
    control->raise(L"ConnectionRequest", {arg(3L)});
    EXPECT_EQ(endpoint.log(), L"Erro:10048:no:-2146818240:fake ");
    EXPECT_EQ(control->log(), "Accept:3 Close Listen ");
    control->failing = "GetData";
    endpoint.log();
    control->raise(L"DataArrival", {arg(1L)});
    EXPECT_EQ(endpoint.log(), L"Erro:10048:no:-2146818240:fake ");
    EXPECT_EQ(control->log(), "GetData:8 Close Listen ");
    control->raise(L"ConnectionRequest");  // without its argument
    EXPECT_EQ(control->log(), "");
}

TEST_F(SystemTcpControl, IsLetGo) {
    const auto first = fake();
    const auto second = fake();
    {
        test::Endpoint endpoint;
        endpoint.attach(first.Get());
        // What is no socket control changes nothing.
        const auto silent = fake(Tells::Nothing);
        for (IDispatch* other :
             {static_cast<IDispatch*>(silent.Get()), static_cast<IDispatch*>(endpoint.tcp.Get())}) {
            const auto called =
                test::call(endpoint.tcp.Get(), L"TcpCom", {arg(other)}, DISPATCH_PROPERTYPUTREF);
            EXPECT_EQ(called.error, static_cast<HRESULT>(0x800A000D));
        }
        first->raise(L"SendComplete");
        EXPECT_EQ(endpoint.log(), L"MsgEnviada ");
        endpoint.attach(second.Get());
        first->raise(L"SendComplete");
        EXPECT_EQ(endpoint.log(), L"");
        EXPECT_EQ(first->AddRef(), 2u);  // held by this test alone
        first->Release();
        endpoint.attach(nullptr);
        second->raise(L"SendComplete");
        EXPECT_EQ(endpoint.log(), L"");
        EXPECT_EQ(endpoint.state(), 0);  // of a socket of the library's own

        // From within an event.
        endpoint.attach(first.Get());
        endpoint.onEvent = [&] { endpoint.attach(second.Get()); };
        first->raise(L"DataArrival", {arg(1L)});
        EXPECT_EQ(first->log(), "GetData:8 ");
        EXPECT_EQ(second->log(), "");
    }
    EXPECT_EQ(second->log(), "Close ");
    EXPECT_EQ(first->log(), "");
}

}  // namespace
}  // namespace vela
