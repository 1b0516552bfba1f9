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
    using Contexts = std::set<UPContext*>;

    // Shared with the contexts, which may be left when this is gone.
    const std::shared_ptr<Contexts>& all() const { return all_; }
    bool isEmpty() const { return all_->empty(); }

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
        LiveContexts* const contexts_;
        const bool due_;
    };

  private:
    bool handle(UINT message, WPARAM first, LPARAM second) override;
    void startTimer(UINT delay);
    void save();
    template <class Visit>
    void each(Visit visit);

    const std::shared_ptr<Contexts> all_ = std::make_shared<Contexts>();
    std::optional<MessageWindow> window_;
    std::optional<std::uint64_t> changed_;  // when, in ms; none when all is saved
    int calls_ = 0;                         // under way
};

// Tells the apartment's preferences, if it has any, that one of their sections has changed.
inline void noteChange() {
    if (auto* contexts = apartmentLocalIfAny<LiveContexts>()) contexts->noteChange();
}

}  // namespace vela
