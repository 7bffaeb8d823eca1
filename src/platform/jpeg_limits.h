// What decoding a JPEG costs, worked out from its markers alone.
#pragma once

#include <cstdint>
#include <span>

// The size of a JPEG's coefficients and the work of its scans. The format: ITU-T T.81, annex B.
struct JpegCost {
    std::int64_t pixels = 0;
    // Bytes of coefficients that are held until the last scan; 0 when one scan holds all components.
    std::int64_t coefficientBytes = 0;
    // Blocks of 8 x 8 samples that all scans visit, and 1,024 more for each scan. A scan that refines
    // coefficients looks at each of them: eight count as one more block.
    std::int64_t visits = 0;
};

// Walks the markers up to the end of the image. What is not there or damaged costs nothing: the decoder stops
// at it.
JpegCost CostOfJpeg(std::span<const std::uint8_t> file);

// Whether a JPEG may be decoded into a picture that takes `pictureBytes`: its file can fill its pixels, the
// coefficients and the picture fit in memory, and its scans make no more than 33,554,432 visits. The usual
// ten scans of a progressive file make about 44 for every 64 pixels.
bool IsJpegAffordable(std::span<const std::uint8_t> file, std::int64_t pictureBytes);
