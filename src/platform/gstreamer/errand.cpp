// Threads that nobody has to wait for.
#include "platform/gstreamer/errand.h"

#include <thread>
#include <utility>

Errand::Errand(std::function<void()> routine) {
    std::thread([state = state_, work = std::move(routine)]() mutable {
        work();
        // What the routine held goes before its end is told.
        work = nullptr;
        const std::lock_guard lock(state->mutex);
        state->done = true;
        state->ended.notify_all();
    }).detach();
}

bool Errand::WaitFor(std::chrono::milliseconds time) const {
    std::unique_lock lock(state_->mutex);
    return state_->ended.wait_for(lock, time, [this] { return state_->done; });
}
