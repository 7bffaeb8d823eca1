// The audio library of the cabinet: GStreamer decodes, our mixer mixes, one output runs all the time.
#pragma once

#include "platform/audio_library.h"
#include "platform/gstreamer/audio_output_options.h"

#include <map>
#include <memory>

class AudioOutput;
class AudioStream;

class GstAudioLibrary : public AudioLibrary {
public:
    explicit GstAudioLibrary(AudioOutputOptions options = {});
    ~GstAudioLibrary() override;

    std::uint32_t BASS_GetVersion() override;
    // Ignores device, frequency and flags: the options or the system choose the sink. Does nothing when the
    // output is open already.
    bool BASS_Init(int device, int frequency, int flags) override;
    void BASS_Free() override;
    std::uint32_t BASS_StreamCreateFile(const QString& path, std::uint32_t flags) override;
    bool BASS_StreamFree(std::uint32_t handle) override;
    // Always false: tracker music is not supported, so every handle is a stream's.
    bool BASS_MusicFree(std::uint32_t handle) override;
    bool BASS_ChannelPlay(std::uint32_t handle, bool restart) override;
    bool BASS_ChannelPause(std::uint32_t handle) override;
    bool BASS_ChannelStop(std::uint32_t handle) override;
    std::int64_t BASS_ChannelGetLength(std::uint32_t handle) override;
    std::int64_t BASS_ChannelGetPosition(std::uint32_t handle) override;
    bool BASS_ChannelSetPosition(std::uint32_t handle, std::int64_t bytes) override;
    double BASS_ChannelBytes2Seconds(std::uint32_t handle, std::int64_t bytes) override;
    std::int64_t BASS_ChannelSeconds2Bytes(std::uint32_t handle, double seconds) override;
    bool BASS_ChannelGetData(std::uint32_t handle, std::array<float, 512>& fft) override;

    // The output that plays the streams, for other sources; null before BASS_Init. BASS_Free stops it.
    std::shared_ptr<AudioOutput> Output() const { return output_; }
    // True while the output has no device and keeps time in silence, and before BASS_Init.
    bool IsSilent();

private:
    using Streams = std::map<std::uint32_t, std::unique_ptr<AudioStream>>;

    AudioStream* Find(std::uint32_t handle);
    static void End(Streams streams);
    std::uint32_t NewHandle();

    const AudioOutputOptions options_;
    std::shared_ptr<AudioOutput> output_;
    Streams streams_;
    std::uint32_t lastHandle_ = 0;
};
