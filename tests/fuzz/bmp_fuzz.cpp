// Fuzzer of the bitmap parser and the system's picture loader.
#include "imaging/formats/bmp_parser.h"
#include "imaging/picture_pixels.h"
#include "platform/pictures/picture_loader.h"
#include "run_files.h"

#include <QtGlobal>

#include <span>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // The toolkit prints a message for every damaged file.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    PictureLoader pictures;
    PicturePixels image;
    cBMPparser().LoadStream(std::span(data, size), image, 0, size, pictures);
    return 0;
}
