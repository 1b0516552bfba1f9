// Connection points: who hears an event, and what listeners may do meanwhile.
#include "automation/events.h"

#include <olectl.h>

#include <functional>

#include "support/support.h"

namespace vela {
namespace {

class Source final : public Object<Source, Unbuilt<_Pulsar>> {
  public:
    void tick() {
        _Pulsar* self = this;
        VARIANT sender{};
        sender.vt = VT_BYREF | VT_DISPATCH;
        sender.ppdispVal = reinterpret_cast<IDispatch**>(&self);
        fire(1, {sender});
    }
};

// A listener that knows only IDispatch, as those of script engines do.
class Sink final : public IDispatch {
  public:
    std::function<HRESULT(IDispatch* sender)> heard;
    int count = 0;

    virtual ~Sink() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
        *result = id == IID_IUnknown || id == IID_IDispatch ? this : nullptr;
        if (!*result) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    // Lives on the stack.
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override { return --references; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* call, VARIANT*,
                                     EXCEPINFO*, UINT*) override {
        EXPECT_EQ(id, 1);
        EXPECT_EQ(call->cArgs, 1u);
        ++count;
        return heard ? heard(*call->rgvarg[0].ppdispVal) : S_OK;
    }
    ULONG references = 0;
};

class AutomationEvents : public test::NoObjectsLeft {
  protected:
    void SetUp() override {
        ComPtr<IConnectionPointContainer> container;
        ASSERT_EQ(source_.As(&container), S_OK);
        ASSERT_EQ(container->FindConnectionPoint(__uuidof(__Pulsar), &point_), S_OK);
    }
    void TearDown() override {
        point_.Reset();
        source_.Reset();
        for (const Sink& sink : sinks_) EXPECT_EQ(sink.references, 0u);
        NoObjectsLeft::TearDown();
    }
    DWORD advise(Sink& sink) {
        DWORD cookie = 0;
        EXPECT_EQ(point_->Advise(&sink, &cookie), S_OK);
        EXPECT_NE(cookie, 0u);
        return cookie;
    }
    Sink sinks_[3];
    ComPtr<Source> source_ = make<Source>();
    ComPtr<IConnectionPoint> point_;
};

TEST_F(AutomationEvents, ReachEveryListenerUntilItLeaves) {
    IDispatch* seen = nullptr;
    sinks_[0].heard = [&](IDispatch* sender) {
        seen = sender;
        return S_OK;
    };
    const DWORD first = advise(sinks_[0]);
    const DWORD second = advise(sinks_[1]);
    EXPECT_NE(first, second);
    source_->tick();
    EXPECT_EQ(seen, static_cast<IDispatch*>(static_cast<_Pulsar*>(source_.Get())));
    EXPECT_EQ(point_->Unadvise(first), S_OK);
    EXPECT_EQ(sinks_[0].references, 0u);
    EXPECT_EQ(point_->Unadvise(first), CONNECT_E_NOCONNECTION);
    source_->tick();
    EXPECT_EQ(sinks_[0].count, 1);
    EXPECT_EQ(sinks_[1].count, 2);
}

TEST_F(AutomationEvents, SurviveListenersThatComeAndGoMeanwhile) {
    DWORD cookies[3] = {};
    sinks_[0].heard = [&](IDispatch*) {
        point_->Unadvise(cookies[0]);
        point_->Unadvise(cookies[1]);
        cookies[2] = advise(sinks_[2]);
        sinks_[0].heard = nullptr;
        return S_OK;
    };
    cookies[0] = advise(sinks_[0]);
    cookies[1] = advise(sinks_[1]);
    // Whoever was connected at the start hears it, whoever came meanwhile does not.
    source_->tick();
    EXPECT_EQ(sinks_[1].count, 1);
    EXPECT_EQ(sinks_[2].count, 0);
    source_->tick();
    EXPECT_EQ(sinks_[0].count, 1);
    EXPECT_EQ(sinks_[1].count, 1);
    EXPECT_EQ(sinks_[2].count, 1);
}

TEST_F(AutomationEvents, IgnoreAListenersFailure) {
    sinks_[0].heard = [](IDispatch*) {
        return guard([] { throw Error{E_FAIL, L"listener", L"no"}; });
    };
    advise(sinks_[0]);
    advise(sinks_[1]);
    source_->tick();
    EXPECT_EQ(sinks_[1].count, 1);
    ComPtr<IErrorInfo> left;
    EXPECT_EQ(GetErrorInfo(0, &left), S_FALSE);
}

TEST_F(AutomationEvents, ConnectOnlyWhatFits) {
    ComPtr<IConnectionPointContainer> container;
    ComPtr<IConnectionPoint> found;
    ASSERT_EQ(point_->GetConnectionPointContainer(&container), S_OK);
    EXPECT_EQ(container->FindConnectionPoint(__uuidof(__cTCP), &found), CONNECT_E_NOCONNECTION);
    EXPECT_EQ(found.Get(), nullptr);
    EXPECT_EQ(container->FindConnectionPoint(IID_IDispatch, &found), S_OK);
    DWORD cookie = 7;
    EXPECT_EQ(point_->Advise(nullptr, &cookie), E_POINTER);
    // No listener: it has no IDispatch.
    EXPECT_EQ(point_->Advise(point_.Get(), &cookie), CONNECT_E_CANNOTCONNECT);
    EXPECT_EQ(cookie, 0u);
    // A class without events has no points.
    const auto silent = test::create(L"VelaUtil10.KVItem");
    EXPECT_EQ(silent.As(&container), E_NOINTERFACE);
}

TEST_F(AutomationEvents, EnumerateTheOnlyPoint) {
    ComPtr<IConnectionPointContainer> container;
    ComPtr<IEnumConnectionPoints> points;
    ASSERT_EQ(source_.As(&container), S_OK);
    ASSERT_EQ(container->EnumConnectionPoints(&points), S_OK);
    IConnectionPoint* found[2] = {};
    ULONG fetched = 9;
    EXPECT_EQ(points->Next(2, found, &fetched), S_FALSE);
    ASSERT_EQ(fetched, 1u);
    EXPECT_EQ(adopted(found[0]).Get(), point_.Get());
    EXPECT_EQ(points->Next(1, found, &fetched), S_FALSE);
    EXPECT_EQ(fetched, 0u);
    ComPtr<IEnumConnectionPoints> copy;
    EXPECT_EQ(points->Clone(&copy), S_OK);
    EXPECT_EQ(copy->Skip(1), S_FALSE);
    EXPECT_EQ(copy->Reset(), S_OK);
    EXPECT_EQ(copy->Skip(1), S_OK);
    IID id{};
    EXPECT_EQ(point_->GetConnectionInterface(&id), S_OK);
    EXPECT_TRUE(id == __uuidof(__Pulsar));
}

}  // namespace
}  // namespace vela
