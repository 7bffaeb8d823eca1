// Work that may take for ever, done aside.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>

// Runs a routine on a thread of its own. One that has not come to an end when the errand is let go is left
// behind, so the routine must hold whatever it uses.
class Errand {
public:
    explicit Errand(std::function<void()> routine);

    bool IsDone() const { return WaitFor(std::chrono::milliseconds(0)); }
    // Waits so long at most for the end. False when it has not come.
    bool WaitFor(std::chrono::milliseconds time) const;

private:
    struct State {
        std::mutex mutex;
        std::condition_variable ended;
        bool done = false;
    };
    std::shared_ptr<State> state_ = std::make_shared<State>();
};
