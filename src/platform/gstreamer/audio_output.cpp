// Keeps one pipeline running at all times; the silent one when there is no device.
#include "platform/gstreamer/audio_output.h"

#include "platform/gstreamer/output_pipeline.h"
#include "platform/gstreamer/start.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds kLookEvery{50};
constexpr milliseconds kStartLimit{1000};
constexpr milliseconds kFirstLookEvery{5};
constexpr milliseconds kFirstWait{100};
constexpr milliseconds kLongestWait{5000};
// A device that has run this long is reliable: its next failure starts with the shortest wait again.
constexpr milliseconds kSteadyAfter{10000};
// A sink that accepts nothing for this long is dead, even if it reports no error.
constexpr milliseconds kStallLimit{3000};
constexpr milliseconds kEndLimit{1000};

} // namespace

AudioOutput::AudioOutput(AudioOutputOptions options) : options_(std::move(options)) {}

AudioOutput::~AudioOutput() {
    Stop();
}

bool AudioOutput::Start() {
    if (supervisor_.joinable()) {
        return true;
    }
    if (!StartGStreamer() || !OutputPipeline::CanUse(options_.silentSink)) {
        return false;
    }
    trialWait_ = kFirstWait;
    quit_ = false;
    try {
        supervisor_ = std::thread([this] { Supervise(); });
    } catch (const std::system_error&) {
        return false; // there are no more threads
    }
    return true;
}

void AudioOutput::Stop() {
    if (supervisor_.joinable()) {
        {
            const std::lock_guard lock(quitMutex_);
            quit_ = true;
        }
        quitSignal_.notify_all();
        supervisor_.join();
    }
    Use(nullptr, true);
    if (trial_ != nullptr) {
        const std::lock_guard lock(trial_->mutex);
        trial_->abandoned = true;
    }
    const auto deadline = steady_clock::now() + kEndLimit;
    for (std::optional<Errand>* errand : {&trialErrand_, &retirement_}) {
        if (*errand) {
            (*errand)->WaitFor(std::chrono::duration_cast<milliseconds>(deadline - steady_clock::now()));
        }
        errand->reset();
    }
    trial_.reset();
}

std::int64_t AudioOutput::HeardFrame() {
    const std::lock_guard lock(pipelineMutex_);
    return pipeline_ != nullptr ? pipeline_->HeardFrame() : mixer_->Drawn();
}

std::int64_t AudioOutput::MixedFrame() const {
    return mixer_->Drawn();
}

bool AudioOutput::IsSilent() {
    const std::lock_guard lock(pipelineMutex_);
    return silent_;
}

void AudioOutput::BeginTrial() {
    trial_ = std::make_shared<Trial>();
    trialErrand_ = Errand::Begin([trial = trial_, options = options_, mixer = mixer_] {
        std::unique_ptr<OutputPipeline> found = OutputPipeline::Open(options, options.sink, mixer);
        const std::lock_guard lock(trial->mutex);
        if (!trial->abandoned) {
            trial->found = std::move(found);
        }
    });
    if (!trialErrand_) {
        PutOffTrial(); // there are no more threads
    }
}

void AudioOutput::PutOffTrial() {
    nextTrial_ = steady_clock::now() + trialWait_;
    trialWait_ = std::min(trialWait_ * 2, kLongestWait);
}

// Returns true when the trial has found a device, which is then in use. A trial that is still running
// continues.
bool AudioOutput::EndTrial() {
    if (!trialErrand_ || !trialErrand_->IsDone()) {
        return false;
    }
    trialErrand_.reset();
    PutOffTrial();
    std::unique_ptr<OutputPipeline> found = std::move(trial_->found);
    const bool success = found != nullptr;
    if (success) {
        Use(std::move(found), options_.sink == options_.silentSink);
    }
    return success;
}

void AudioOutput::Use(std::unique_ptr<OutputPipeline> pipeline, bool silent) {
    std::shared_ptr<OutputPipeline> next = std::move(pipeline);
    mixer_->SetDrawer(next.get());
    {
        const std::lock_guard lock(pipelineMutex_);
        pipeline_.swap(next);
        silent_ = silent;
    }
    openedAt_ = steady_clock::now();
    watchedAt_ = openedAt_;
    Retire(std::move(next));
}

void AudioOutput::FallSilent() {
    Use(OutputPipeline::Open(options_, options_.silentSink, mixer_), true);
}

// Retires one pipeline at a time, unless the previous one does not end.
void AudioOutput::Retire(std::shared_ptr<OutputPipeline> pipeline) {
    if (pipeline != nullptr) {
        retirement_ = Errand::Begin([ending = std::move(pipeline)]() mutable { ending.reset(); });
    }
}

void AudioOutput::Supervise() {
    FindFirstDevice();
    while (!QuitWithin(kLookEvery)) {
        LookAfterPipeline();
        LookForDevice();
    }
}

// Mixes nothing until the first trial is over, so that no sound starts while nobody can hear it. A slow trial
// continues while the silent sink runs.
void AudioOutput::FindFirstDevice() {
    const auto deadline = steady_clock::now() + kStartLimit;
    BeginTrial();
    while (trialErrand_ && !trialErrand_->WaitFor(kFirstLookEvery) && steady_clock::now() < deadline &&
           !QuitWithin(milliseconds(0))) {
    }
    if (!EndTrial()) {
        FallSilent();
    }
}

bool AudioOutput::QuitWithin(milliseconds time) {
    std::unique_lock lock(quitMutex_);
    return quitSignal_.wait_for(lock, time, [this] { return quit_; });
}

void AudioOutput::LookAfterPipeline() {
    if (pipeline_ != nullptr && !pipeline_->HasFailed() && !IsStalled()) {
        return;
    }
    const auto now = steady_clock::now();
    if (!silent_) {
        trialWait_ = now - openedAt_ > kSteadyAfter ? kFirstWait : trialWait_;
        nextTrial_ = now + trialWait_;
    }
    FallSilent();
}

bool AudioOutput::IsStalled() {
    const auto now = steady_clock::now();
    if (mixer_->Drawn() != watchedFrame_) {
        watchedFrame_ = mixer_->Drawn();
        watchedAt_ = now;
    }
    return now - watchedAt_ > kStallLimit;
}

void AudioOutput::LookForDevice() {
    if (trialErrand_) {
        EndTrial();
    } else if (silent_ && options_.sink != options_.silentSink && steady_clock::now() >= nextTrial_) {
        BeginTrial();
    }
}
