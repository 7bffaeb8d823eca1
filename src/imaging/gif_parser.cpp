// The GIF parser. It reads nothing yet and leaves every file to the parsers behind it.
#include "imaging/gif_parser.h"

bool cGIFparser::LoadStream(std::span<const std::uint8_t> /*inStream*/, c32bppDIB& /*cHost*/,
                            std::size_t /*streamOffset*/, std::size_t /*streamLength*/) {
    return false;
}
