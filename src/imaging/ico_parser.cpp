// The icon and cursor parser: one entry of the directory, which is a PNG or a bitmap with a mask.
#include "imaging/ico_parser.h"

#include "core/byte_reader.h"
#include "imaging/c32bppdib.h"
#include "imaging/icon_bitmap.h"
#include "imaging/icon_directory.h"
#include "imaging/png_parser.h"

namespace {

// Where a bitmap has its bit count, a PNG has the letters "DR" of its first chunk.
bool IsPng(std::span<const std::uint8_t> data) {
    constexpr std::size_t kTestedAt = 14;
    constexpr std::uint16_t kLetters = 21060;
    ByteReader reader(data);
    return reader.Skip(kTestedAt) && reader.ReadLittleEndian16() == kLetters;
}

} // namespace

bool cICOparser::LoadStream(std::span<const std::uint8_t> inStream, int desiredWidth, int desiredHeight,
                            c32bppDIB& cHost, std::size_t streamOffset, std::size_t streamLength,
                            ZlibLibrary& zlib) {
    cHost.DestroyDIB();
    if (streamOffset > inStream.size() || streamLength > inStream.size() - streamOffset) {
        return false;
    }
    const auto entries = ReadIconDirectory(inStream.subspan(streamOffset, streamLength));
    const IconEntry* const entry = entries ? ChooseIconEntry(*entries, desiredWidth, desiredHeight) : nullptr;
    if (entry == nullptr) {
        return false;
    }
    const bool isRead = IsPng(entry->data)
                            ? cPNGparser().LoadStream(entry->data, cHost, 0, entry->data.size(), zlib)
                            : ReadIconBitmap(entry->data, cHost);
    if (!isRead) {
        cHost.DestroyDIB();
        return false;
    }
    cHost.ImageType = kImageIcon;
    return true;
}
