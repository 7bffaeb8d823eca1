// Port: the audio library, which plays one file stream: transport, position, spectrum.
#pragma once

#include <QString>

#include <array>
#include <cstdint>

// A stream is named by its handle. 0 is no stream; a freed handle is refused in the same way. Lengths and
// positions are bytes of 16-bit stereo frames at 44100 Hz, 4 bytes a frame. Event thread only: the adapter's
// own threads never call back.
struct AudioLibrary {
    virtual ~AudioLibrary() = default;

    // The version: major in bits 24 to 31, minor in bits 16 to 23. The high half is 0x0204.
    virtual std::uint32_t BASS_GetVersion() = 0;
    // Opens the output. Returns false when no output can be opened, not even the silent one.
    virtual bool BASS_Init(int device, int frequency, int flags) = 0;
    // Frees every stream and the output. May be called before BASS_Init.
    virtual void BASS_Free() = 0;
    // Opens a file without playing it. Returns 0 when the file is missing, cannot be decoded or has no sound,
    // and when opening takes five seconds of CPU time or, with the waits for its disk, fifteen seconds in
    // all. With kSampleLoop in `flags` the stream restarts without a gap whenever it ends.
    virtual std::uint32_t BASS_StreamCreateFile(const QString& path, std::uint32_t flags) = 0;
    virtual bool BASS_StreamFree(std::uint32_t handle) = 0;
    virtual bool BASS_MusicFree(std::uint32_t handle) = 0;
    // Starts or resumes. With `restart` it plays from the beginning.
    virtual bool BASS_ChannelPlay(std::uint32_t handle, bool restart) = 0;
    virtual bool BASS_ChannelPause(std::uint32_t handle) = 0;
    // Stops. The next play starts where the position was set, or at the beginning.
    virtual bool BASS_ChannelStop(std::uint32_t handle) = 0;
    // Length in bytes, always above 0 for an open stream; an estimate until the exact length is known. 0
    // without a stream.
    virtual std::int64_t BASS_ChannelGetLength(std::uint32_t handle) = 0;
    // Position in bytes of what is played now; 0 when it cannot be read.
    virtual std::int64_t BASS_ChannelGetPosition(std::uint32_t handle) = 0;
    // Returns false, and does not move, when the position is outside the stream.
    virtual bool BASS_ChannelSetPosition(std::uint32_t handle, std::int64_t bytes) = 0;
    virtual double BASS_ChannelBytes2Seconds(std::uint32_t handle, std::int64_t bytes) = 0;
    virtual std::int64_t BASS_ChannelSeconds2Bytes(std::uint32_t handle, double seconds) = 0;
    // 512 magnitudes of the 1024 frames that are audible now: left and right averaged, Hann window; a
    // full-scale sine on a bin gives 1.0. Returns false and leaves `fft` untouched without a running stream.
    virtual bool BASS_ChannelGetData(std::uint32_t handle, std::array<float, 512>& fft) = 0;
};

// Flag of BASS_StreamCreateFile: the stream loops.
constexpr std::uint32_t kSampleLoop = 4;
// Bytes of one second: 44100 frames of two 16-bit samples.
constexpr double kBytesPerSecond = 44100.0 * 4;
