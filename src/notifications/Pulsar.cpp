#include "notifications/Pulsar.h"

#include "notifications/shared_hub.h"

namespace vela {

namespace {

constexpr DISPID kPulse = 1;
constexpr SHORT kSharedIndex = 0;

}  // namespace

Pulsar::Pulsar() : index_(timers_->add(*this, static_cast<_Pulsar*>(this))) {}

Pulsar::~Pulsar() { timers_->forget(*this); }

HRESULT Pulsar::get_PulseInterval(LONG* result) { return give(result, interval_); }

HRESULT Pulsar::put_PulseInterval(LONG newValue) { return take(interval_, newValue); }

HRESULT Pulsar::get_PulsePattern(BSTR* result) { return give(result, pattern_); }

HRESULT Pulsar::put_PulsePattern(BSTR newValue) { return take(pattern_, newValue); }

HRESULT Pulsar::get_Index(SHORT* result) { return give(result, index_); }

HRESULT Pulsar::StartPulse() {
    return guard([&] {
        timers_->enable(index_, interval_);
        stopped_ = VARIANT_FALSE;
    });
}

void Pulsar::stop() {
    timers_->disable(index_);
    stopped_ = VARIANT_TRUE;
}

HRESULT Pulsar::StopPulse() {
    return guard([&] { stop(); });
}

HRESULT Pulsar::Dispose() {
    return guard([&] {
        stop();
        timers_->release(index_);
    });
}

HRESULT Pulsar::CreatePulsar(LONG pulseInterval, _Pulsar** result) {
    return answer(result, [&] {
        sharedPulsar();  // the first slot is its own
        auto pulsar = make<Pulsar>();
        pulsar->interval_ = pulseInterval;
        return pulsar;
    });
}

HRESULT Pulsar::get_Stopped(VARIANT_BOOL* result) { return give(result, stopped_); }

void Pulsar::tick() {
    if (index_ == kSharedIndex) {
        ComPtr<_INotification> onPulse;
        VARIANT_BOOL ignored = VARIANT_FALSE;
        checkRecorded(sharedNotifications()->get_OnPulse(&onPulse));
        if (onPulse) checkRecorded(onPulse->Notify(nullptr, nullptr, &ignored));
    } else if (place_.advance(pattern_)) {
        ComPtr<IDispatch> sender(this);
        fire(kPulse, {byReference(sender)});
    }
}

}  // namespace vela
