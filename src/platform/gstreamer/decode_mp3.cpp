// Decoding MPEG audio with libmpg123.
#include "platform/gstreamer/decode_mp3.h"

#include "core/path_text.h"
#include "platform/gstreamer/local_file.h"
#include "platform/gstreamer/pcm.h"

#include <mpg123.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <memory>

namespace {

// More than a minute at the highest bit rate, with a large picture before it.
constexpr qint64 kMostBytes = 16 << 20;

struct EndDecoder {
    void operator()(mpg123_handle* decoder) const { mpg123_delete(decoder); }
};
using DecoderHandle = std::unique_ptr<mpg123_handle, EndDecoder>;

// Tests for a tag, or for the eleven set bits at the start of every frame. Only the start counts, because
// other files may contain these bits by chance.
bool LooksLikeMp3(const QByteArray& bytes) {
    return bytes.startsWith("ID3") || (bytes.size() > 1 && bytes[0] == '\xFF' &&
                                       (static_cast<unsigned char>(bytes[1]) & 0xE0U) == 0xE0U);
}

std::optional<QByteArray> ReadMp3(const QString& path) {
    const QByteArray name = BytesOfPath(path);
    QString reason;
    if (!IsPlainFile(name, reason)) {
        return std::nullopt;
    }
    std::ifstream file(name.toStdString(), std::ios::binary);
    QByteArray bytes(kMostBytes, Qt::Uninitialized);
    file.read(bytes.data(), kMostBytes);
    bytes.truncate(file.gcount());
    return file.eof() && LooksLikeMp3(bytes) ? std::optional(std::move(bytes)) : std::nullopt;
}

DecoderHandle OpenDecoder(const QByteArray& bytes) {
    mpg123_init();
    DecoderHandle decoder(mpg123_new(nullptr, nullptr));
    if (decoder == nullptr) {
        return nullptr;
    }
    mpg123_param(decoder.get(), MPG123_ADD_FLAGS, MPG123_QUIET, 0.0);
    mpg123_param(decoder.get(), MPG123_REMOVE_FLAGS, MPG123_AUTO_RESAMPLE, 0.0);
    mpg123_format_none(decoder.get());
    mpg123_format(decoder.get(), kFramesPerSecond, MPG123_STEREO, MPG123_ENC_SIGNED_16);
    const bool fed = mpg123_open_feed(decoder.get()) == MPG123_OK &&
                     mpg123_feed(decoder.get(), reinterpret_cast<const unsigned char*>(bytes.constData()),
                                 static_cast<std::size_t>(bytes.size())) == MPG123_OK;
    return fed ? std::move(decoder) : nullptr;
}

} // namespace

std::optional<DecodedSound> DecodeMp3(const QString& path, double maxSeconds) {
    const std::optional<QByteArray> bytes = ReadMp3(path);
    const DecoderHandle decoder = bytes ? OpenDecoder(*bytes) : nullptr;
    if (decoder == nullptr) {
        return std::nullopt;
    }
    const auto limit = static_cast<std::size_t>(std::clamp(maxSeconds, 0.0, 3600.0) * kFramesPerSecond) * 2;
    DecodedSound sound;
    std::array<std::int16_t, 8192> block{};
    int outcome = MPG123_OK;
    // The end of the data, or damage after the first frames, ends the sound.
    while ((outcome == MPG123_OK || outcome == MPG123_NEW_FORMAT) && sound.samples.size() < limit) {
        std::size_t size = 0;
        outcome = mpg123_read(decoder.get(), block.data(), sizeof(block), &size);
        sound.samples.insert(sound.samples.end(), block.begin(),
                             block.begin() + static_cast<std::ptrdiff_t>(size / sizeof(std::int16_t)));
    }
    sound.samples.resize(std::min(sound.samples.size(), limit));
    return sound.samples.empty() ? std::nullopt : std::optional(std::move(sound));
}
