// The simulated audio library and media graphs: real files with positions that follow the simulated time.
#pragma once

#include "platform/audio_library.h"
#include "platform/gstreamer/decode_file.h"
#include "platform/media_graph.h"
#include "platform/simulated/simulated_time.h"

#include <map>

class CallRecord;
class Failures;

// An ideal device: a stream has the exact length of its file, and its position is exact to the frame. Streams
// wrap at their end, whether or not they were opened to loop.
class SimulatedAudio : public AudioLibrary {
public:
    // Clock, record and failures outlive the library.
    SimulatedAudio(const SimulatedClock& clock, CallRecord& record, const Failures& failures)
        : clock_(clock), record_(record), failures_(failures) {}

    // Returns 0, a wrong version, when it fails.
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
    // Rounds to the nearest frame.
    std::int64_t BASS_ChannelSeconds2Bytes(std::uint32_t handle, double seconds) override;
    // Uses the 1024 frames from the position on, also for a paused stream. A stream that was never started or
    // is stopped is not running. Positions after half an hour have no data.
    bool BASS_ChannelGetData(std::uint32_t handle, std::array<float, 512>& fft) override;

private:
    struct Stream {
        QString path;
        PlayHead head;
        // The beginning of the file, decoded as far as needed so far.
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

// A graph's position stops at its end. Its file is opened for its length and the size of its picture; nothing
// is shown.
class SimulatedGraphs : public MediaGraphs {
public:
    // Clock, record and failures outlive the graphs.
    SimulatedGraphs(const SimulatedClock& clock, CallRecord& record, const Failures& failures)
        : clock_(clock), record_(record), failures_(failures) {}

    std::shared_ptr<MediaGraph> CreateGraph(const QString& name) override;

private:
    const SimulatedClock& clock_;
    CallRecord& record_;
    const Failures& failures_;
};
