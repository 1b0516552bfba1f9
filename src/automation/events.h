// Connection points: how an object's events reach its listeners.
#pragma once

#include <windows.h>

#include <ocidl.h>

#include <vector>

#include "automation/convert.h"

namespace vela {

// Arguments of an event. What listeners put into a place belongs to whoever owns the place.
inline VARIANT byReference(VARTYPE type, void* place) {
    VARIANT argument{};
    argument.vt = static_cast<VARTYPE>(VT_BYREF | type);
    argument.byref = place;
    return argument;
}
inline VARIANT byReference(BSTR& place) { return byReference(VT_BSTR, &place); }
inline VARIANT byReference(ComPtr<IDispatch>& place) {
    return byReference(VT_DISPATCH, place.GetAddressOf());
}
template <class Enum>
requires std::is_enum_v<Enum> VARIANT byReference(Enum& place) {
    static_assert(sizeof place == sizeof(LONG));
    return byReference(VT_I4, &place);
}
inline VARIANT byValue(SHORT number) {
    VARIANT argument{};
    argument.vt = VT_I2;
    argument.iVal = number;
    return argument;
}

// The one outgoing interface of a class with events. The point shares the object's reference count.
class EventSourceBase : public IConnectionPointContainer {
  public:
    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) final;
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** point) final;

  protected:
    explicit EventSourceBase(const IID& events) : point_(*this, events) {}
    ~EventSourceBase() = default;

    // Calls event `id` on every listener that is connected when it starts; `arguments` in declared
    // order. A listener's failure is swallowed and leaves no error info.
    void fire(DISPID id, std::vector<VARIANT> arguments);

  private:
    class Point : public IConnectionPoint {
      public:
        Point(EventSourceBase& owner, const IID& events) : owner_(owner), events_(events) {}
        HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override;
        ULONG STDMETHODCALLTYPE AddRef() override { return owner_.AddRef(); }
        ULONG STDMETHODCALLTYPE Release() override { return owner_.Release(); }
        HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* id) override;
        HRESULT STDMETHODCALLTYPE
        GetConnectionPointContainer(IConnectionPointContainer** container) override;
        HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
        HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
        HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }

        struct Listener {
            DWORD cookie;
            ComPtr<IDispatch> sink;
        };
        EventSourceBase& owner_;
        const IID events_;
        std::vector<Listener> listeners_;
        DWORD lastCookie_ = 0;
    };
    Point point_;
};

template <class Events>
class EventSource : public EventSourceBase {
  protected:
    EventSource() : EventSourceBase(__uuidof(Events)) {}
};
template <>
class EventSource<void> {};

}  // namespace vela
