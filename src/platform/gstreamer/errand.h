// Work that may never end, done on a thread of its own.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

// A routine on a thread of its own. The thread keeps running when the errand is destroyed first, so the
// routine must own whatever it uses. It must not throw.
class Errand {
public:
    // Nothing when the system has no more threads; the routine is destroyed then without having run.
    static std::optional<Errand> Begin(std::function<void()> routine);

    bool IsDone() const { return WaitFor(std::chrono::milliseconds(0)); }
    // Waits for the end, for so long at most. False when it has not come.
    bool WaitFor(std::chrono::milliseconds time) const;

private:
    struct State {
        std::mutex mutex;
        std::condition_variable ended;
        bool done = false;
    };

    Errand() = default;

    std::shared_ptr<State> state_ = std::make_shared<State>();
};
