// Shared by the tests of decoding and sound: generated files, files made with ffmpeg, waiting with a
// deadline.
#pragma once

#include "core/path_text.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <numbers>
#include <string>
#include <thread>
#include <vector>

namespace media {

using Samples = std::vector<std::int16_t>;

// A sine on both channels.
inline Samples Tone(double frequency, double seconds, double amplitude) {
    Samples samples(static_cast<std::size_t>(seconds * 44100) * 2);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double angle = 2 * std::numbers::pi * frequency * static_cast<double>(i / 2) / 44100;
        samples[i] = static_cast<std::int16_t>(std::lround(amplitude * 32767 * std::sin(angle)));
    }
    return samples;
}

inline void AppendNumber(std::string& bytes, std::uint32_t number, int size) {
    for (int i = 0; i < size; ++i) {
        bytes += static_cast<char>((number >> (8 * i)) & 0xFF);
    }
}

// A WAV file of 16-bit stereo, at 44100 Hz unless another rate is stated.
inline std::string WavBytes(const Samples& samples, std::uint32_t rate = 44100) {
    const auto dataSize = static_cast<std::uint32_t>(samples.size() * 2);
    std::string bytes = "RIFF";
    AppendNumber(bytes, 36 + dataSize, 4);
    bytes += "WAVEfmt ";
    AppendNumber(bytes, 16, 4);
    AppendNumber(bytes, 1, 2);
    AppendNumber(bytes, 2, 2);
    AppendNumber(bytes, rate, 4);
    AppendNumber(bytes, rate * 4, 4);
    AppendNumber(bytes, 4, 2);
    AppendNumber(bytes, 16, 2);
    bytes += "data";
    AppendNumber(bytes, dataSize, 4);
    for (const std::int16_t sample : samples) {
        AppendNumber(bytes, static_cast<std::uint16_t>(sample), 2);
    }
    return bytes;
}

// A separate folder for files that a test writes.
class Scratch {
public:
    Scratch() {
        std::string pattern = std::filesystem::temp_directory_path() / "vantorix-XXXXXX";
        const char* made = mkdtemp(pattern.data());
        EXPECT_NE(made, nullptr);
        folder_ = pattern;
    }
    ~Scratch() { std::filesystem::remove_all(folder_); }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    // Writes a file and returns its path. The name may hold any byte but "/" and NUL.
    QString Write(const QByteArray& name, const std::string& content) {
        const std::string path = folder_ + '/' + name.toStdString();
        std::ofstream(path, std::ios::binary) << content;
        return TextOfPath(QByteArray::fromStdString(path));
    }
    QString WriteTone(const QByteArray& name, double frequency, double seconds, double amplitude = 0.5) {
        return Write(name, WavBytes(Tone(frequency, seconds, amplitude)));
    }
    QString Path() const { return TextOfPath(QByteArray::fromStdString(folder_)); }

private:
    std::string folder_;
};

// A file that tests/media/make_media.sh makes.
inline QString MadeFile(const char* name) {
    const QString folder = QStringLiteral(TESTS_BUILD_FOLDER "/media");
    static const bool made = [&] {
        // The toolkit's child processes confuse ThreadSanitizer, which takes their fork for one of this
        // process.
        const std::string script =
            "bash '" TESTS_FOLDER "/media/make_media.sh' '" + folder.toStdString() + "'";
        return std::system(script.c_str()) == 0;
    }();
    EXPECT_TRUE(made) << "make_media.sh failed";
    return folder + QLatin1Char('/') + QLatin1String(name);
}

inline double SecondsNow() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// Waits until a condition holds. Returns false when it does not within this many seconds.
inline bool Eventually(const std::function<bool()>& condition, double seconds = 10) {
    const double deadline = SecondsNow() + seconds;
    while (!condition()) {
        if (SecondsNow() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

// Compares a position in frames with the elapsed time. A busy machine sometimes reads one of them late; a
// position that runs at another speed drifts further from the time with each second.
class Pace {
public:
    void Start(std::int64_t frame) {
        startFrame_ = frame;
        start_ = SecondsNow();
    }
    // Returns true once the position agrees with the time within 0.15 s, after a second or more. Returns
    // false when it does not within ten seconds.
    bool IsReal(const std::function<std::int64_t()>& frame) const {
        return Eventually([&] {
            const double played = static_cast<double>(frame() - startFrame_) / 44100;
            return played >= 1 && std::abs(SecondsNow() - start_ - played) < 0.15;
        });
    }

private:
    std::int64_t startFrame_ = 0;
    double start_ = 0;
};

inline std::string BytesOf(const QString& path) {
    std::ifstream file(path.toStdString(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// The bytes of a song of twenty seconds that is damaged from its third second to its ninth, so that the
// decoder gives up there.
inline std::string DamagedSong() {
    std::string bytes = BytesOf(MadeFile("song.flac"));
    EXPECT_GT(bytes.size(), 500000U);
    for (std::size_t i = bytes.size() / 6; i < bytes.size() / 3; i += 7) {
        bytes[i] = static_cast<char>(bytes[i] ^ 0x5A);
    }
    return bytes;
}

// The amplitude of one frequency in a piece of one channel (Goertzel 1958), 1.0 for a full-scale sine.
inline double Amplitude(const Samples& samples, std::size_t firstFrame, std::size_t frames, double frequency,
                        int channel = 0) {
    const double factor = 2 * std::cos(2 * std::numbers::pi * frequency / 44100);
    double last = 0;
    double beforeLast = 0;
    for (std::size_t i = 0; i < frames; ++i) {
        const double sample = samples[(firstFrame + i) * 2 + static_cast<std::size_t>(channel)] / 32768.0;
        const double next = sample + factor * last - beforeLast;
        beforeLast = last;
        last = next;
    }
    const double power = last * last + beforeLast * beforeLast - factor * last * beforeLast;
    return 2 * std::sqrt(std::max(power, 0.0)) / static_cast<double>(frames);
}

} // namespace media
