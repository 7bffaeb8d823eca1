// A sound output that runs from Start to Stop and mixes the attached sources.
#pragma once

#include "core/errand.h"
#include "platform/gstreamer/audio_output_options.h"
#include "platform/gstreamer/mixer.h"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

class OutputPipeline;

// When the device or the sound server goes away, the output keeps mixing its sources in silence at the same
// pace and looks for a device again: after 0.1 s, then after twice the time, up to every 5 s. It does the
// same when a device is missing at the start or a server stops answering: no call here waits long for it.
class AudioOutput {
public:
    explicit AudioOutput(AudioOutputOptions options);
    ~AudioOutput();
    AudioOutput(const AudioOutput&) = delete;
    AudioOutput& operator=(const AudioOutput&) = delete;

    // Looks for a device on a separate thread and returns at once. Returns false when not even the silent
    // sink is installed, or the system has no more threads. Does nothing when the output runs already.
    bool Start();
    // Does nothing when the output does not run. Waits for at most a second: what a sound server blocks
    // longer is left to its own thread.
    void Stop();
    void Attach(SoundSource& source) { mixer_->Attach(source); }
    void Detach(SoundSource& source) { mixer_->Detach(source); }
    // The number of the frame that is audible now: the frames mixed so far minus those still buffered. From
    // any thread.
    std::int64_t HeardFrame();
    // The frames mixed so far. From any thread.
    std::int64_t MixedFrame() const;
    // True while the silent sink is in use.
    bool IsSilent();

private:
    using Time = std::chrono::steady_clock::time_point;

    // A search for a device on a separate thread.
    struct Trial {
        std::mutex mutex;
        bool abandoned = false;
        std::unique_ptr<OutputPipeline> found;
    };

    void BeginTrial();
    void PutOffTrial();
    bool EndTrial();
    void Use(std::unique_ptr<OutputPipeline> pipeline, bool silent);
    void FallSilent();
    void Retire(std::shared_ptr<OutputPipeline> pipeline);
    void Supervise();
    void FindFirstDevice();
    bool QuitWithin(std::chrono::milliseconds time);
    void LookAfterPipeline();
    void LookForDevice();
    bool IsStalled();

    const AudioOutputOptions options_;
    const std::shared_ptr<Mixer> mixer_ = std::make_shared<Mixer>();

    std::mutex pipelineMutex_;
    std::shared_ptr<OutputPipeline> pipeline_;
    bool silent_ = true;

    std::shared_ptr<Trial> trial_;
    std::optional<Errand> trialErrand_;
    std::optional<Errand> retirement_;
    Time nextTrial_;
    std::chrono::milliseconds trialWait_{0};
    Time openedAt_;
    std::int64_t watchedFrame_ = 0;
    Time watchedAt_;

    std::mutex quitMutex_;
    std::condition_variable quitSignal_;
    bool quit_ = false;
    std::thread supervisor_;
};
