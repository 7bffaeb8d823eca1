// The bitmap parser, last of the chain. It reads nothing yet.
#include "imaging/bmp_parser.h"

bool cBMPparser::LoadStream(std::span<const std::uint8_t> /*inStream*/, c32bppDIB& /*cHost*/,
                            std::size_t /*streamOffset*/, std::size_t /*streamLength*/) {
    return false;
}
