#include "preferences/live_contexts.h"

#include "preferences/up_context.h"

namespace vela {

namespace {

constexpr UINT kDelay = 2000;  // ms
constexpr UINT kRetry = 100;   // ms
constexpr UINT_PTR kTimer = 1;

}  // namespace

LiveContexts::Call::Call()
    : contexts_(apartmentLocalIfAny<LiveContexts>()),
      due_(contexts_ && contexts_->changed_ && GetTickCount64() - *contexts_->changed_ >= kDelay) {
    if (contexts_) ++contexts_->calls_;
}

LiveContexts::Call::~Call() {
    if (contexts_ && --contexts_->calls_ == 0 && due_) contexts_->save();
}

void LiveContexts::noteChange() {
    if (changed_) return;
    changed_ = GetTickCount64();
    // Without a window the next call of a facade saves.
    quietly([&] { startTimer(kDelay); });
}

void LiveContexts::startTimer(UINT delay) {
    MessageHandler& handler = *this;
    if (!window_) {
        window_.emplace(handler, L"Preferences to be saved", MessageWindow::Kind::TopLevel);
    }
    SetTimer(window_->get(), kTimer, delay, nullptr);
}

bool LiveContexts::handle(UINT message, WPARAM first, LPARAM) {
    if (message == WM_ENDSESSION) {
        if (first) save();
        return true;
    }
    if (message != WM_TIMER || first != kTimer) return false;
    if (calls_ > 0) startTimer(kRetry);
    else save();
    return true;
}

void LiveContexts::save() {
    changed_.reset();
    if (window_) KillTimer(window_->get(), kTimer);
    ++calls_;
    each([](UPContext& context) { context.saveInPassing(); });
    --calls_;
}

// One may take others with it, and itself.
template <class Visit>
void LiveContexts::each(Visit visit) {
    const auto all = all_;
    for (UPContext* context : Contexts(*all)) {
        quietly([&] {
            if (all->contains(context)) visit(*context->shared_from_this());
        });
    }
}

// A client that forgets to stop loses nothing.
void LiveContexts::end() {
    ++calls_;
    each([](UPContext& context) { context.finish(); });
}

}  // namespace vela
