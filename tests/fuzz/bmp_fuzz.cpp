// Fuzzer of the bitmap parser with the system's picture loader behind it.
#include "imaging/bmp_parser.h"
#include "imaging/c32bppdib.h"
#include "platform/pictures/picture_loader.h"
#include "run_files.h"

#include <QtGlobal>

#include <span>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // The toolkit tells about every damaged file.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    PictureLoader pictures;
    c32bppDIB image;
    cBMPparser().LoadStream(std::span(data, size), image, 0, size, pictures);
    return 0;
}
