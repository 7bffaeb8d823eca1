// Fuzzer of saved playlists.
#include "one_file.h"
#include "playback/playlist_file.h"
#include "run_files.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    WithOneFile(QStringLiteral("playlists/a.vtxpl"), data, size,
                [](Form_Main& form, const QString& path) { ReadPlaylistFile(form, path); });
    return 0;
}
