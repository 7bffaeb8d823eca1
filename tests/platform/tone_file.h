// Makes small sound files for the tests.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QtEndian>

#include <cmath>
#include <cstdint>

// Writes a WAV file (RIFF, 16-bit stereo at 44100 Hz) with this many frames of a sine at half of full scale.
inline void WriteTone(const QString& path, std::int64_t frames, double frequency) {
    const auto little32 = [](std::uint32_t value) {
        const quint32 bytes = qToLittleEndian(value);
        return QByteArray(reinterpret_cast<const char*>(&bytes), 4);
    };
    QByteArray samples;
    for (std::int64_t frame = 0; frame < frames; ++frame) {
        const double angle = 2 * M_PI * frequency * static_cast<double>(frame) / 44100;
        const auto sample =
            static_cast<std::uint16_t>(static_cast<std::int16_t>(std::lround(16384 * std::sin(angle))));
        samples += little32(static_cast<std::uint32_t>(sample) << 16 | sample);
    }
    const auto size = static_cast<std::uint32_t>(samples.size());
    QByteArray format = little32(16) + QByteArray("\1\0\2\0", 4) + little32(44100) + little32(44100 * 4);
    format += QByteArray("\4\0\20\0", 4);
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write("RIFF" + little32(size + 36) + "WAVEfmt " + format + "data" + little32(size) + samples);
}
