// Recordings of the wire: what arrived, and when.
#pragma once

#include <chrono>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

// A file that cannot be written or read, or a wrong line in it, in words.
class RecordingError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Writes a text file: one line for each piece that arrived, with the seconds since the start, a blank, and
// the bytes with \r, \n, \\ and \xHH.
class Recorder {
public:
    explicit Recorder(const std::string& path);

    void Take(std::string_view bytes, std::chrono::microseconds since);

private:
    struct CloseFile {
        void operator()(std::FILE* file) const {
            std::fclose(file);
        } // NOLINT(cppcoreguidelines-owning-memory)
    };
    std::string path_;
    std::unique_ptr<std::FILE, CloseFile> file_;
};

struct RecordedPiece {
    std::chrono::microseconds since{0};
    std::string bytes;
};

std::vector<RecordedPiece> ReadRecording(const std::string& path);
