// The preferences of an apartment: saved in passing, and stopped at the apartment's end.
//
// In passing: two seconds after a change, what is unsaved is saved, at idle, by a timer of the
// thread's message loop. Where there is no loop, the next call of a facade that comes later saves
// after its own work. Never in the midst of a call. The end of the platform's session saves, too.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <set>

#include "runtime/apartment.h"
#include "runtime/message_window.h"

namespace vela {

class UPContext;

class LiveContexts : public ApartmentCache, private MessageHandler {
  public:
    // What the contexts and calls hold, which may be left when the apartment has ended.
    struct State {
        std::set<UPContext*> contexts;
        std::optional<std::uint64_t> changed;  // when, in ms; none when all is saved
        int calls = 0;                         // under way
        LiveContexts* owner = nullptr;         // null when that is gone
    };

    LiveContexts() { state_->owner = this; }
    ~LiveContexts() { state_->owner = nullptr; }
    LiveContexts(const LiveContexts&) = delete;
    LiveContexts& operator=(const LiveContexts&) = delete;

    const std::shared_ptr<State>& state() const { return state_; }
    bool isEmpty() const { return state_->contexts.empty(); }

    // Tells that something is unsaved.
    void noteChange();
    void end();

    // For its length nothing is saved in passing; what has waited long enough by its beginning is
    // saved at its end.
    class Call {
      public:
        Call();
        ~Call();
        Call(const Call&) = delete;
        Call& operator=(const Call&) = delete;

      private:
        std::shared_ptr<State> state_;
        bool due_ = false;
    };

  private:
    bool handle(UINT message, WPARAM first, LPARAM second) override;
    void wait(UINT delay);
    void save();

    const std::shared_ptr<State> state_ = std::make_shared<State>();
    std::optional<MessageWindow> timer_;
    // Other programs wait for the top-level windows of a thread: only one with a message loop gets
    // this.
    std::optional<MessageWindow> session_;
};

// Tells the apartment's preferences, if it has any, that one of their sections has changed.
inline void noteChange() {
    if (auto* contexts = apartmentLocalIfAny<LiveContexts>()) contexts->noteChange();
}

}  // namespace vela
