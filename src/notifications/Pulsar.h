// A periodic tick on the caller's thread.
#pragma once

#include "contract.h"
#include "notifications/core/pulse_pattern.h"
#include "notifications/timer_pool.h"

namespace vela {

class Pulsar final : public Object<Pulsar, _Pulsar>, public Ticking {
  public:
    Pulsar();
    ~Pulsar() override;

    HRESULT STDMETHODCALLTYPE get_PulseInterval(LONG* result) override;
    HRESULT STDMETHODCALLTYPE put_PulseInterval(LONG newValue) override;
    HRESULT STDMETHODCALLTYPE get_PulsePattern(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE put_PulsePattern(BSTR newValue) override;
    HRESULT STDMETHODCALLTYPE get_Index(SHORT* result) override;
    HRESULT STDMETHODCALLTYPE StartPulse() override;
    HRESULT STDMETHODCALLTYPE StopPulse() override;
    HRESULT STDMETHODCALLTYPE Dispose() override;
    HRESULT STDMETHODCALLTYPE CreatePulsar(LONG pulseInterval, _Pulsar** result) override;
    HRESULT STDMETHODCALLTYPE get_Stopped(VARIANT_BOOL* result) override;

    // One tick of the timer. Throws what a subscriber of OnPulse raises.
    void tick() override;

  private:
    void stop();

    const std::shared_ptr<TimerPool> timers_ = TimerPool::shared();
    const SHORT index_;
    LONG interval_ = 60000;  // milliseconds
    std::wstring pattern_;
    PatternPlace place_;
    VARIANT_BOOL stopped_ = VARIANT_TRUE;
};

}  // namespace vela
