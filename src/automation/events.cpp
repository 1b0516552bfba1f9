#include "automation/events.h"

#include <olectl.h>

#include <algorithm>

#include "automation/counted.h"
#include "automation/error.h"

namespace vela {

namespace {

// Enumerates the only connection point.
class PointEnumerator final : public Counted<IEnumConnectionPoints> {
  public:
    explicit PointEnumerator(IConnectionPoint* point, bool done) : point_(point), done_(done) {}
    HRESULT STDMETHODCALLTYPE Next(ULONG count, IConnectionPoint** points,
                                   ULONG* fetched) override {
        if (!points) return E_POINTER;
        const bool one = count > 0 && !std::exchange(done_, done_ || count > 0);
        if (fetched) *fetched = one ? 1 : 0;
        if (one) point_.CopyTo(points);
        return one && count == 1 ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
        const bool one = count > 0 && !std::exchange(done_, done_ || count > 0);
        return count == 0 || (one && count == 1) ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Reset() override {
        done_ = false;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(IEnumConnectionPoints** copy) override {
        if (!copy) return E_POINTER;
        *copy = new (std::nothrow) PointEnumerator(point_.Get(), done_);
        return *copy ? S_OK : E_OUTOFMEMORY;
    }

  private:
    ComPtr<IConnectionPoint> point_;
    bool done_;
};

}  // namespace

HRESULT EventSourceBase::EnumConnectionPoints(IEnumConnectionPoints** points) {
    if (!points) return E_POINTER;
    *points = new (std::nothrow) PointEnumerator(&point_, false);
    return *points ? S_OK : E_OUTOFMEMORY;
}

HRESULT EventSourceBase::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
    if (!point) return E_POINTER;
    *point = nullptr;
    if (id != point_.events_ && id != IID_IDispatch) return CONNECT_E_NOCONNECTION;
    point_.AddRef();
    *point = &point_;
    return S_OK;
}

void EventSourceBase::fire(DISPID id, std::vector<VARIANT> arguments) {
    if (point_.listeners_.empty()) return;
    std::reverse(arguments.begin(), arguments.end());
    guard([&] {
        const auto listeners = point_.listeners_;
        for (const auto& listener : listeners) {
            DISPPARAMS call{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
            Variant ignored;
            listener.sink->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &call,
                                  &ignored, nullptr, nullptr);
        }
    });
    SetErrorInfo(0, nullptr);
}

HRESULT EventSourceBase::Point::QueryInterface(REFIID id, void** result) {
    if (!result) return E_POINTER;
    *result = nullptr;
    if (id != IID_IUnknown && id != IID_IConnectionPoint) return E_NOINTERFACE;
    AddRef();
    *result = static_cast<IConnectionPoint*>(this);
    return S_OK;
}

HRESULT EventSourceBase::Point::GetConnectionInterface(IID* id) {
    if (!id) return E_POINTER;
    *id = events_;
    return S_OK;
}

HRESULT EventSourceBase::Point::GetConnectionPointContainer(IConnectionPointContainer** container) {
    if (!container) return E_POINTER;
    owner_.AddRef();
    *container = &owner_;
    return S_OK;
}

HRESULT EventSourceBase::Point::Advise(IUnknown* sink, DWORD* cookie) {
    if (!sink || !cookie) return E_POINTER;
    *cookie = 0;
    ComPtr<IDispatch> listener;
    if (FAILED(sink->QueryInterface(events_, &listener)) &&
        FAILED(sink->QueryInterface(IID_PPV_ARGS(&listener)))) {
        return CONNECT_E_CANNOTCONNECT;
    }
    return guard([&] {
        listeners_.push_back({lastCookie_ + 1, listener});
        *cookie = ++lastCookie_;
    });
}

HRESULT EventSourceBase::Point::Unadvise(DWORD cookie) {
    const auto found = std::find_if(listeners_.begin(), listeners_.end(),
                                    [&](const Listener& l) { return l.cookie == cookie; });
    if (found == listeners_.end()) return CONNECT_E_NOCONNECTION;
    const ComPtr<IDispatch> last = std::move(found->sink);
    listeners_.erase(found);
    return S_OK;
}

}  // namespace vela
