// The audio library's operations on streams and their output.
#include "platform/gstreamer/audio_library.h"

#include "core/errand.h"
#include "platform/gstreamer/audio_output.h"
#include "platform/gstreamer/audio_stream.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

GstAudioLibrary::GstAudioLibrary(AudioOutputOptions options) : options_(std::move(options)) {}

GstAudioLibrary::~GstAudioLibrary() {
    BASS_Free();
}

std::uint32_t GstAudioLibrary::BASS_GetVersion() {
    return 0x02040000;
}

bool GstAudioLibrary::BASS_Init(int, int, int) {
    if (output_ != nullptr) {
        return true;
    }
    auto output = std::make_shared<AudioOutput>(options_);
    if (!output->Start()) {
        return false;
    }
    output_ = std::move(output);
    return true;
}

void GstAudioLibrary::BASS_Free() {
    if (output_ != nullptr) {
        output_->Stop();
    }
    End(std::exchange(streams_, {}));
    output_.reset();
}

// Destroys the streams. After a second, a stream whose disk does not answer is left to its own thread.
void GstAudioLibrary::End(Streams streams) {
    constexpr std::chrono::seconds kEndLimit{1};
    auto ending = std::make_shared<Streams>(std::move(streams));
    if (ending->empty()) {
        return;
    }
    if (const auto errand = Errand::Begin([owned = std::move(ending)]() mutable { owned.reset(); })) {
        errand->WaitFor(kEndLimit);
    }
}

std::uint32_t GstAudioLibrary::BASS_StreamCreateFile(const QString& path, std::uint32_t flags) {
    if (output_ == nullptr) {
        return 0;
    }
    std::unique_ptr<AudioStream> stream = AudioStream::Open(path, (flags & kSampleLoop) != 0);
    if (stream == nullptr) {
        return 0;
    }
    const std::uint32_t handle = NewHandle();
    output_->Attach(*stream);
    streams_.emplace(handle, std::move(stream));
    return handle;
}

// A handle is reused only after all others, so that an old handle is not taken for a new stream's.
std::uint32_t GstAudioLibrary::NewHandle() {
    do {
        ++lastHandle_;
    } while (lastHandle_ == 0 || streams_.contains(lastHandle_));
    return lastHandle_;
}

AudioStream* GstAudioLibrary::Find(std::uint32_t handle) {
    const auto found = streams_.find(handle);
    return found == streams_.end() ? nullptr : found->second.get();
}

bool GstAudioLibrary::BASS_StreamFree(std::uint32_t handle) {
    AudioStream* stream = Find(handle);
    if (stream == nullptr) {
        return false;
    }
    output_->Detach(*stream);
    Streams ending;
    ending.insert(streams_.extract(handle));
    End(std::move(ending));
    return true;
}

bool GstAudioLibrary::BASS_MusicFree(std::uint32_t) {
    return false;
}

bool GstAudioLibrary::BASS_ChannelPlay(std::uint32_t handle, bool restart) {
    AudioStream* stream = Find(handle);
    if (stream != nullptr) {
        stream->Play(restart);
    }
    return stream != nullptr;
}

bool GstAudioLibrary::BASS_ChannelPause(std::uint32_t handle) {
    AudioStream* stream = Find(handle);
    return stream != nullptr && stream->Pause();
}

bool GstAudioLibrary::BASS_ChannelStop(std::uint32_t handle) {
    AudioStream* stream = Find(handle);
    if (stream != nullptr) {
        stream->Stop();
    }
    return stream != nullptr;
}

std::int64_t GstAudioLibrary::BASS_ChannelGetLength(std::uint32_t handle) {
    AudioStream* stream = Find(handle);
    return stream != nullptr ? stream->Length() * kBytesPerFrame : 0;
}

std::int64_t GstAudioLibrary::BASS_ChannelGetPosition(std::uint32_t handle) {
    AudioStream* stream = Find(handle);
    return stream != nullptr ? stream->Position() * kBytesPerFrame : 0;
}

// A position inside a frame selects that frame.
bool GstAudioLibrary::BASS_ChannelSetPosition(std::uint32_t handle, std::int64_t bytes) {
    AudioStream* stream = Find(handle);
    return stream != nullptr && bytes >= 0 && stream->SetPosition(bytes / kBytesPerFrame);
}

double GstAudioLibrary::BASS_ChannelBytes2Seconds(std::uint32_t, std::int64_t bytes) {
    return static_cast<double>(bytes) / kBytesPerSecond;
}

// Rounds to the nearest frame. Times that no file reaches are cut to the range of the result.
std::int64_t GstAudioLibrary::BASS_ChannelSeconds2Bytes(std::uint32_t, double seconds) {
    constexpr double kMostSeconds = 1e9;
    const double bounded = std::isnan(seconds) ? 0.0 : std::clamp(seconds, -kMostSeconds, kMostSeconds);
    return std::llround(bounded * static_cast<double>(kFramesPerSecond)) * kBytesPerFrame;
}

bool GstAudioLibrary::BASS_ChannelGetData(std::uint32_t handle, std::array<float, 512>& fft) {
    AudioStream* stream = Find(handle);
    if (stream == nullptr || !stream->IsPlaying()) {
        return false;
    }
    // The window is centred on what is heard now, as far as it has been mixed: the lights follow half a
    // window sooner than with one that ends there.
    constexpr auto kHalf = static_cast<std::int64_t>(kSpectrumFrames / 2);
    const std::int64_t end = std::min(output_->HeardFrame() + kHalf, output_->MixedFrame());
    fft = SpectrumOf(stream->HandedOutBefore(end));
    return true;
}

bool GstAudioLibrary::IsSilent() {
    return output_ == nullptr || output_->IsSilent();
}
