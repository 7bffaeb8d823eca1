// The icon and cursor parser. It reads nothing yet and leaves every file to the parser behind it.
#include "imaging/ico_parser.h"

bool cICOparser::LoadStream(std::span<const std::uint8_t> /*inStream*/, int /*desiredWidth*/,
                            int /*desiredHeight*/, c32bppDIB& /*cHost*/, std::size_t /*streamOffset*/,
                            std::size_t /*streamLength*/, ZlibLibrary& /*zlib*/) {
    return false;
}
