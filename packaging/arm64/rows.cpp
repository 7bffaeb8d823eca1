// Runs one of the PNG decoder's routines on a row of 1920 pixels, so that its instructions can be counted.
// Usage: rows ROUTINE PIXEL_BYTES REPETITIONS
// ROUTINE: sub, up, average, paeth, zeros (Paeth on a plain row), colours, alpha (every pixel half
// transparent), opaque (every alpha 255). Prints a sum of the result.
#include "imaging/png/expand.h"
#include "imaging/png/filter.h"

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <numeric>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kPixels = 1920;
using Bytes = std::vector<std::uint8_t>;

Bytes Noise(std::size_t size) {
    std::minstd_rand dice(1);
    Bytes bytes(size);
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(dice() >> 8);
    }
    return bytes;
}

Bytes WithAlpha(Bytes row, std::uint8_t alpha) {
    for (std::size_t i = 3; i < row.size(); i += 4) {
        row[i] = alpha;
    }
    return row;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        return 2;
    }
    const std::string routine = argv[1];
    const auto step = static_cast<std::size_t>(std::atoi(argv[2]));
    Bytes row = Noise(kPixels * step);
    const Bytes prior = routine == "zeros" ? Bytes(row.size()) : Noise(row.size());
    if (routine == "zeros") {
        row = prior;
    }
    const Bytes halfTransparent = WithAlpha(row, 128);
    const Bytes opaque = WithAlpha(row, 255);
    Bytes target(kPixels * 4);
    const auto filtered = [&](int filter) {
        return [&, filter] { Unfilter(filter, row, prior.data(), step); };
    };
    const std::map<std::string, std::function<void()>> routines{
        {"sub", filtered(1)},
        {"up", filtered(2)},
        {"average", filtered(3)},
        {"paeth", filtered(4)},
        {"zeros", filtered(4)},
        {"colours", [&] { ExpandColours(row.data(), 0x123456, target); }},
        {"alpha", [&] { ExpandColoursWithAlpha(halfTransparent.data(), target); }},
        {"opaque", [&] { ExpandColoursWithAlpha(opaque.data(), target); }},
    };
    const auto found = routines.find(routine);
    if (found == routines.end()) {
        return 2;
    }
    for (int left = std::atoi(argv[3]); left > 0; --left) {
        found->second();
    }
    std::printf("%d\n", std::accumulate(row.begin(), row.end(), 0) +
                            std::accumulate(target.begin(), target.end(), 0));
    return 0;
}
