// The cost of decoding a JPEG, computed from its markers only.
#pragma once

#include <cstdint>
#include <span>

// The size of a JPEG's coefficients and the work of its scans. Format: ITU-T T.81, annex B.
struct JpegCost {
    std::int64_t pixels = 0;
    // Bytes of coefficients that are kept until the last scan; 0 when one scan holds all components.
    std::int64_t coefficientBytes = 0;
    // Blocks of 8 x 8 samples that all scans visit, plus 1,024 for each scan. A scan that refines
    // coefficients visits each of them: eight coefficients count as one more block.
    std::int64_t visits = 0;
};

// Walks the markers up to the end of the image. Missing or damaged data costs nothing because the decoder
// stops there.
JpegCost CostOfJpeg(std::span<const std::uint8_t> file);

// Whether a JPEG may be decoded into a picture that takes `pictureBytes`: its file is large enough for its
// pixels, the coefficients and the picture fit in memory, and its scans make no more than 33,554,432 visits.
// The usual ten scans of a progressive file make about 44 visits for every 64 pixels.
bool IsJpegAffordable(std::span<const std::uint8_t> file, std::int64_t pictureBytes);
