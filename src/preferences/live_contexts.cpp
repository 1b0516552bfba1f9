#include "preferences/live_contexts.h"

#include "preferences/up_context.h"

namespace vela {

namespace {

constexpr UINT kDelay = 2000;          // ms
constexpr UINT kRetryAfterCall = 100;  // ms
constexpr UINT kRetry = 30000;         // ms, of what could not be written
constexpr UINT kLoopIsThere = WM_APP;
constexpr UINT_PTR kTimer = 1;
constexpr wchar_t kName[] = L"Preferences to be saved";

// One may take others with it, and itself.
template <class Visit>
void each(LiveContexts::State& state, Visit visit) {
    quietly([&] {
        for (UPContext* context : std::set<UPContext*>(state.contexts)) {
            quietly([&] {
                if (state.contexts.contains(context)) visit(*context->shared_from_this());
            });
        }
    });
}

}  // namespace

LiveContexts::Call::Call() {
    const auto* contexts = apartmentLocalIfAny<LiveContexts>();
    if (!contexts) return;
    state_ = contexts->state_;
    ++state_->calls;
    due_ = state_->changed && GetTickCount64() - *state_->changed >= kDelay;
}

LiveContexts::Call::~Call() {
    if (!state_ || --state_->calls > 0) return;
    if (due_ && state_->owner) state_->owner->save();
}

void LiveContexts::noteChange() {
    if (state_->changed) return;
    state_->changed = GetTickCount64();
    // Without a window the next call of a facade saves.
    quietly([&] { wait(kDelay); });
}

void LiveContexts::wait(UINT delay) {
    MessageHandler& handler = *this;
    if (!timer_) {
        timer_.emplace(handler, kName);
        PostMessageW(timer_->get(), kLoopIsThere, 0, 0);
    }
    SetTimer(timer_->get(), kTimer, delay, nullptr);
}

bool LiveContexts::handle(UINT message, WPARAM first, LPARAM) {
    MessageHandler& handler = *this;
    if (message == kLoopIsThere) {
        if (!session_) session_.emplace(handler, kName, MessageWindow::Kind::TopLevel);
    } else if (message == WM_ENDSESSION) {
        if (first) each(*state_, [](UPContext& context) { context.manager()->saveEach(); });
    } else if (message == WM_CLOSE) {
        // From a program that closes all windows of this one. It stays for the session's end.
    } else if (message == WM_TIMER && first == kTimer) {
        if (state_->calls > 0) wait(kRetryAfterCall);
        else save();
    } else {
        return false;
    }
    return true;
}

void LiveContexts::save() {
    const auto state = state_;  // what is called may end the apartment
    state->changed.reset();
    if (timer_) KillTimer(timer_->get(), kTimer);
    bool owes = false;
    ++state->calls;
    each(*state, [&](UPContext& context) {
        context.manager()->saveInPassing();
        owes = owes || context.manager()->owesAny();
    });
    --state->calls;
    if (!owes || state->changed || !state->owner) return;
    state->changed = GetTickCount64();
    quietly([&] { wait(kRetry); });
}

// A client that forgets to stop loses nothing.
void LiveContexts::end() {
    ++state_->calls;
    each(*state_, [](UPContext& context) { context.finish(); });
}

}  // namespace vela
