#include "automation/event_listener.h"

#include <algorithm>
#include <memory>
#include <vector>

#include "automation/counted.h"
#include "automation/error.h"
#include "automation/late_properties.h"
#include "automation/type_info.h"

namespace vela {

namespace {

using Descriptions = std::vector<ComPtr<ITypeInfo>>;

// What describes an object: its class where the object tells, else its default interface.
ComPtr<ITypeInfo> descriptionOf(IUnknown* object) {
    ComPtr<ITypeInfo> info;
    ComPtr<IProvideClassInfo> provider;
    ComPtr<IDispatch> dispatch;
    if (SUCCEEDED(object->QueryInterface(IID_PPV_ARGS(&provider)))) provider->GetClassInfo(&info);
    if (!info && SUCCEEDED(object->QueryInterface(IID_PPV_ARGS(&dispatch)))) {
        dispatch->GetTypeInfo(0, LOCALE_USER_DEFAULT, &info);
    }
    return info;
}

// The default source interface of a class; null when it has none or is no class.
ComPtr<ITypeInfo> defaultSource(ITypeInfo* description) {
    constexpr int kDefaultSource = IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE;
    const auto attributes = attributesOf(description);
    const UINT count = attributes ? attributes->cImplTypes : 0;
    for (UINT i = 0; i < count; ++i) {
        int flags = 0;
        const bool isSource = SUCCEEDED(description->GetImplTypeFlags(i, &flags)) &&
                              (flags & kDefaultSource) == kDefaultSource;
        if (auto source = isSource ? related(description, i) : nullptr) return source;
    }
    return nullptr;
}

std::vector<IID> connectionIds(IConnectionPointContainer* container) {
    std::vector<IID> ids;
    ComPtr<IEnumConnectionPoints> points;
    if (FAILED(container->EnumConnectionPoints(&points))) return ids;
    ComPtr<IConnectionPoint> point;
    IID id{};
    while (points->Next(1, point.ReleaseAndGetAddressOf(), nullptr) == S_OK) {
        if (SUCCEEDED(point->GetConnectionInterface(&id))) ids.push_back(id);
    }
    return ids;
}

// The interfaces that an object's events may belong to, the likeliest first.
Descriptions outgoingInterfaces(IUnknown* object, IConnectionPointContainer* container) {
    Descriptions found;
    const ComPtr<ITypeInfo> description = descriptionOf(object);
    if (!description) return found;
    ComPtr<ITypeLib> library;
    UINT index = 0;
    description->GetContainingTypeLib(&library, &index);
    // The sink can be called by numbers alone, not through virtual functions.
    const auto add = [&](const ComPtr<ITypeInfo>& info) {
        if (isKind(info.Get(), TKIND_DISPATCH)) found.push_back(info);
    };
    const auto addById = [&](const IID& id) {
        ComPtr<ITypeInfo> info;
        if (library && SUCCEEDED(library->GetTypeInfoOfGuid(id, &info))) add(info);
    };
    ComPtr<IProvideClassInfo2> provider;
    IID id{};
    if (SUCCEEDED(object->QueryInterface(IID_PPV_ARGS(&provider))) &&
        SUCCEEDED(provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &id))) {
        addById(id);
    }
    if (const auto source = defaultSource(description.Get())) add(source);
    for (const IID& point : connectionIds(container)) addById(point);
    return found;
}

// The numbers of the events, DISPID_UNKNOWN for those that the interface lacks.
std::vector<DISPID> numbersOf(ITypeInfo* events, std::span<const wchar_t* const> names) {
    std::vector<DISPID> numbers;
    for (const wchar_t* name : names) {
        MEMBERID number = DISPID_UNKNOWN;
        auto* writable = const_cast<wchar_t*>(name);
        if (FAILED(events->GetIDsOfNames(&writable, 1, &number))) number = DISPID_UNKNOWN;
        numbers.push_back(number);
    }
    return numbers;
}

}  // namespace

// What the object calls. It may outlive the listener, as long as the object holds it.
class EventListener::Sink final : public Counted<IDispatch> {
  public:
    explicit Sink(Handler handler) : handler_(std::make_shared<Handler>(std::move(handler))) {}

    void expect(const IID& interfaceId, std::vector<DISPID> numbers) {
        interfaceId_ = interfaceId;
        numbers_ = std::move(numbers);
    }
    void end() { handler_.reset(); }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        if (!count) return E_POINTER;
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* call, VARIANT*,
                                     EXCEPINFO*, UINT*) override {
        const auto found = std::find(numbers_.begin(), numbers_.end(), id);
        const auto handler = handler_;
        if (!handler || !call || id == DISPID_UNKNOWN || found == numbers_.end()) return S_OK;
        quietly([&] {
            std::vector<VARIANT> arguments(call->rgvarg, call->rgvarg + call->cArgs);
            std::reverse(arguments.begin(), arguments.end());
            (*handler)(static_cast<std::size_t>(found - numbers_.begin()), arguments);
        });
        return S_OK;
    }

  protected:
    bool isAlso(REFIID id) const override { return id == interfaceId_; }

  private:
    std::shared_ptr<Handler> handler_;  // null when the listener has ended
    IID interfaceId_ = IID_IDispatch;
    std::vector<DISPID> numbers_;
};

EventListener::EventListener(IUnknown* source, std::span<const wchar_t* const> names,
                             std::size_t required, Handler handler)
    : sink_(adopted(new Sink(std::move(handler)))) {
    ComPtr<IConnectionPointContainer> points;
    if (FAILED(source->QueryInterface(IID_PPV_ARGS(&points)))) raise(RuntimeError::TypeMismatch);
    for (const auto& events : outgoingInterfaces(source, points.Get())) {
        std::vector<DISPID> numbers = numbersOf(events.Get(), names);
        const auto end = numbers.begin() + static_cast<std::ptrdiff_t>(required);
        if (std::find(numbers.begin(), end, DISPID_UNKNOWN) != end) continue;
        const IID id = identityOf(events.Get()).id;
        sink_->expect(id, std::move(numbers));
        if (SUCCEEDED(points->FindConnectionPoint(id, point_.ReleaseAndGetAddressOf())) &&
            SUCCEEDED(point_->Advise(sink_.Get(), &cookie_))) {
            return;
        }
    }
    raise(RuntimeError::TypeMismatch);
}

EventListener::~EventListener() {
    sink_->end();
    point_->Unadvise(cookie_);
}

}  // namespace vela
