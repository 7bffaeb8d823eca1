// The simulated audio library: real files, whose positions move with the simulated time.
#pragma once

#include "platform/audio_library.h"
#include "platform/gstreamer/decode_file.h"
#include "platform/simulated/play_head.h"

#include <map>

class CallRecord;
class Failures;
class SimulatedClock;

// An ideal device: a stream has the exact length of its file, and the position is exact to the frame. A
// stream wraps at its end whether or not it was opened to loop.
class SimulatedAudio : public AudioLibrary {
public:
    // Clock, record and failures outlive the library.
    SimulatedAudio(const SimulatedClock& clock, CallRecord& record, const Failures& failures)
        : clock_(clock), record_(record), failures_(failures) {}

    // 0, which is the wrong version, when it fails.
    std::uint32_t BASS_GetVersion() override;
    bool BASS_Init(int device, int frequency, int flags) override;
    void BASS_Free() override;
    std::uint32_t BASS_StreamCreateFile(const QString& path, std::uint32_t flags) override;
    bool BASS_StreamFree(std::uint32_t handle) override;
    bool BASS_MusicFree(std::uint32_t handle) override;
    bool BASS_ChannelPlay(std::uint32_t handle, bool restart) override;
    bool BASS_ChannelPause(std::uint32_t handle) override;
    bool BASS_ChannelStop(std::uint32_t handle) override;
    std::int64_t BASS_ChannelGetLength(std::uint32_t handle) override;
    std::int64_t BASS_ChannelGetPosition(std::uint32_t handle) override;
    bool BASS_ChannelSetPosition(std::uint32_t handle, std::int64_t bytes) override;
    double BASS_ChannelBytes2Seconds(std::uint32_t handle, std::int64_t bytes) override;
    // The nearest whole frame.
    std::int64_t BASS_ChannelSeconds2Bytes(std::uint32_t handle, double seconds) override;
    // The 1024 frames from the position on, also of a stream that pauses. A stream that was never started or
    // is stopped is not running. Positions past half an hour have no data.
    bool BASS_ChannelGetData(std::uint32_t handle, std::array<float, 512>& fft) override;

private:
    struct Stream {
        QString path;
        PlayHead head;
        // Started and not stopped since.
        bool active = false;
        // The beginning of the file, as far as it has been asked for.
        DecodedSound sound;
    };

    Stream* Find(std::uint32_t handle);
    static bool DecodeUpTo(Stream& stream, std::int64_t frame);

    const SimulatedClock& clock_;
    CallRecord& record_;
    const Failures& failures_;
    std::map<std::uint32_t, Stream> streams_;
    std::uint32_t lastHandle_ = 0;
};
