// Detached threads that report their end.
#include "core/errand.h"

#include <system_error>
#include <thread>
#include <utility>

std::optional<Errand> Errand::Begin(std::function<void()> routine) {
    const Errand errand;
    try {
        std::thread([state = errand.state_, work = std::move(routine)]() mutable {
            work();
            // What the routine owned is destroyed before the end is reported.
            work = nullptr;
            const std::lock_guard lock(state->mutex);
            state->done = true;
            state->ended.notify_all();
        }).detach();
    } catch (const std::system_error&) {
        return std::nullopt;
    }
    return errand;
}

bool Errand::WaitFor(std::chrono::milliseconds time) const {
    std::unique_lock lock(state_->mutex);
    return state_->ended.wait_for(lock, time, [this] { return state_->done; });
}
