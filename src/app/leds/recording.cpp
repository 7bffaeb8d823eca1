// Recordings of the wire: what arrived, and when.
#include "app/leds/recording.h"

#include "app/leds/message.h"

#include <cerrno>
#include <charconv>
#include <cstring>
#include <fstream>
#include <optional>

namespace {

constexpr std::string_view kHead = "# vantorix-leds recording";
// A year, so that no time leaves its type.
constexpr double kMostSeconds = 366.0 * 24 * 3600;

[[noreturn]] void Fail(const std::string& path) {
    throw RecordingError(path + ": " + std::strerror(errno)); // NOLINT(concurrency-mt-unsafe)
}

std::optional<RecordedPiece> ReadPiece(std::string_view line) {
    const std::size_t blank = line.find(' ');
    double seconds = 0;
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), seconds);
    RecordedPiece piece;
    const bool good = blank != std::string_view::npos && error == std::errc() && end == line.data() + blank &&
                      seconds >= 0 && seconds <= kMostSeconds &&
                      Unescape(line.substr(blank + 1), piece.bytes);
    if (!good) {
        return std::nullopt;
    }
    piece.since =
        std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::duration<double>(seconds));
    return piece;
}

} // namespace

Recorder::Recorder(const std::string& path) : path_(path), file_(std::fopen(path.c_str(), "we")) {
    if (!file_ || std::fprintf(file_.get(), "%s 1\n", std::string(kHead).c_str()) < 0) {
        Fail(path_);
    }
}

void Recorder::Take(std::string_view bytes, std::chrono::microseconds since) {
    const std::string text = Escaped(bytes);
    const double seconds = std::chrono::duration<double>(since).count();
    if (std::fprintf(file_.get(), "%.6f %s\n", seconds, text.c_str()) < 0 || std::fflush(file_.get()) != 0) {
        Fail(path_);
    }
}

std::vector<RecordedPiece> ReadRecording(const std::string& path) {
    std::ifstream file(path);
    std::string line;
    if (!file || !std::getline(file, line)) {
        errno = errno == 0 ? EINVAL : errno;
        Fail(path);
    }
    if (!line.starts_with(kHead)) {
        throw RecordingError(path + ": this is not a recording of vantorix-leds");
    }
    std::vector<RecordedPiece> pieces;
    for (int number = 2; std::getline(file, line); ++number) {
        std::optional<RecordedPiece> piece = ReadPiece(line);
        if (!piece || (!pieces.empty() && piece->since < pieces.back().since)) {
            throw RecordingError(path + ", line " + std::to_string(number) +
                                 ": expected increasing seconds, a blank, and bytes");
        }
        pieces.push_back(std::move(*piece));
    }
    return pieces;
}
