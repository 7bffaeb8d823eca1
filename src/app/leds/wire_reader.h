// Cutting the bytes of the wire into lines.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

// Lines end with a line feed. A line without one in its first 64 bytes is cut there, so that a wire that
// never ends a line takes no memory.
class WireReader {
public:
    static constexpr std::size_t kLongestLine = 64;

    // Called with each line, its line end included, and the number of its first byte.
    using Sink = std::function<void(std::string_view line, std::uint64_t first)>;

    explicit WireReader(Sink sink) : sink_(std::move(sink)) {}

    void Take(std::string_view bytes);
    // The wire was closed. Delivers a line that has no end.
    void Close();

    std::uint64_t Bytes() const { return bytes_; }

private:
    void Deliver();

    Sink sink_;
    std::string line_;
    std::uint64_t bytes_ = 0;
};
