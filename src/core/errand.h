// Work that may never end, on a separate thread.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

// A routine that runs on a separate thread. The thread keeps running when the errand is destroyed first, so
// the routine must own everything it uses. It must not throw.
class Errand {
public:
    // Returns nothing when the system has no more threads; the routine is then destroyed without having run.
    static std::optional<Errand> Begin(std::function<void()> routine);

    bool IsDone() const { return WaitFor(std::chrono::milliseconds(0)); }
    // Waits for the end for at most `time`. Returns false when the routine still runs.
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
