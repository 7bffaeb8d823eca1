// A file system that counts its calls and fails chosen ones.
#pragma once

#include "platform/simulated/simulated_resources.h"

#include <map>
#include <string>

// CopyRights and RealPath cannot fail and are not counted.
class FailingFiles : public SimulatedFiles {
public:
    static constexpr int kEndless = 1'000'000'000;

    // `real` outlives this object.
    explicit FailingFiles(Files& real)
        : SimulatedFiles(real, [this](const char* operation) { return Fails(operation); }) {}

    // Fails the operation of that name ("Write", "Rename", ...) `times` times, starting with its `call`-th
    // call from now on, counted from 1.
    void Fail(const std::string& operation, int call = 1, int times = kEndless) {
        plans_[operation] = {Calls(operation) + call, times};
    }
    void FailNothing() { plans_.clear(); }
    // How often an operation has been called, failures included.
    int Calls(const std::string& operation) const {
        const auto found = calls_.find(operation);
        return found == calls_.end() ? 0 : found->second;
    }

private:
    // Which calls of an operation fail, counted from its first call.
    struct Plan {
        int first = 0;
        int times = 0;
    };

    bool Fails(const std::string& operation) {
        const int call = ++calls_[operation];
        const auto plan = plans_.find(operation);
        return plan != plans_.end() && call >= plan->second.first &&
               call - plan->second.first < plan->second.times;
    }

    std::map<std::string, Plan> plans_;
    std::map<std::string, int> calls_;
};
