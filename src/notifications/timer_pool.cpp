#include "notifications/timer_pool.h"

#include <algorithm>

#include "automation/error.h"
#include "runtime/apartment.h"

namespace vela {

namespace {

// The platform knows timers by a number other than 0.
UINT_PTR timerOf(std::size_t index) { return index + 1; }

struct OpenPool {
    const std::shared_ptr<TimerPool> pool = std::make_shared<TimerPool>();

    void end() { pool->close(); }
};

}  // namespace

std::shared_ptr<TimerPool> TimerPool::shared() { return apartmentLocal<OpenPool>().pool; }

SHORT TimerPool::add(Ticking& pulsar, IUnknown* object) {
    const auto isFree = [](const Slot& slot) { return slot.pulsar == nullptr; };
    auto place =
        slots_.empty() ? slots_.end() : std::find_if(slots_.begin() + 1, slots_.end(), isFree);
    const SHORT index = count16(static_cast<std::size_t>(place - slots_.begin()));
    if (place == slots_.end()) place = slots_.insert(place, Slot{});
    place->pulsar = &pulsar;
    place->object = object;
    return index;
}

void TimerPool::enable(SHORT index, LONG interval) {
    if (!window_) return;
    if (interval <= 0) return disable(index);
    if (!SetTimer(window_->get(), timerOf(index), static_cast<UINT>(interval), nullptr))
        raiseLastError();
    slots_[index].kept = slots_[index].object;
}

void TimerPool::disable(SHORT index) {
    if (!window_) return;
    KillTimer(window_->get(), timerOf(index));
    const auto last = std::exchange(slots_[index].kept, nullptr);
}

void TimerPool::release(SHORT index) {
    disable(index);
    if (index > 0 && window_) slots_[index] = Slot{};
}

void TimerPool::forget(const Ticking& pulsar) {
    const auto found = std::find_if(slots_.begin(), slots_.end(),
                                    [&](const Slot& slot) { return slot.pulsar == &pulsar; });
    if (found != slots_.end()) *found = Slot{};
}

bool TimerPool::handle(UINT message, WPARAM timer, LPARAM) {
    if (message != WM_TIMER) return false;
    const auto alive = shared_from_this();
    tick(timer - timerOf(0));  // a subscriber's error has nobody to go to: it ends this tick
    return true;
}

void TimerPool::tick(std::size_t index) {
    // A tick may still arrive that was due when its timer was disabled.
    if (index >= slots_.size() || !slots_[index].kept) return;
    const auto alive = slots_[index].kept;
    slots_[index].pulsar->tick();
}

void TimerPool::close() {
    window_.reset();
    // Pulsars that only their timers kept alive go now.
    std::exchange(slots_, {}).clear();
}

}  // namespace vela
