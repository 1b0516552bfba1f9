// The timers of the apartment's pulsars.
#pragma once

#include <memory>
#include <vector>

#include "automation/convert.h"
#include "runtime/message_window.h"

namespace vela {

class Ticking {
  public:
    virtual void tick() = 0;

  protected:
    ~Ticking() = default;
};

// One timer per slot, all on a message-only window, so that ticks arrive in the message loop of the
// apartment's thread. A slot knows its pulsar without keeping it alive; only an enabled timer does
// that. Slot 0 belongs to the first pulsar for good.
class TimerPool final : public std::enable_shared_from_this<TimerPool>, private MessageHandler {
  public:
    // The apartment's pool. When the apartment ends, timers enabled then are disabled, and none can
    // be enabled any more.
    static std::shared_ptr<TimerPool> shared();

    // Gives `pulsar` the lowest free slot; `object` is what keeps it alive. Throws Error 6 above
    // 32,767.
    SHORT add(Ticking& pulsar, IUnknown* object);
    // Has the timer of a slot tick every `interval` milliseconds. The platform makes of less than
    // 10 what its timers can do; at 0 and below there are no ticks.
    void enable(SHORT index, LONG interval);
    void disable(SHORT index);
    // Disables the timer and, but for slot 0, frees the slot.
    void release(SHORT index);
    // Frees the slot of a pulsar that is being destroyed, if it still has one.
    void forget(const Ticking& pulsar);
    void close();

  private:
    struct Slot {
        Ticking* pulsar = nullptr;  // null when free
        IUnknown* object = nullptr;
        ComPtr<IUnknown> kept;  // `object` while the timer is enabled
    };

    bool handle(UINT message, WPARAM timer, LPARAM) override;
    void tick(std::size_t index);

    std::vector<Slot> slots_;
    // Until it is closed.
    std::unique_ptr<MessageWindow> window_{new MessageWindow(*this, L"VelaUtil10.Timers")};
};

}  // namespace vela
