// stb_image for comparison, compiled in a separate source.
#include "stb_peer.h"

#include <cstdio>
#include <cstdlib>

#ifdef __GNUC__
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wsign-conversion"
#endif
#define STB_IMAGE_IMPLEMENTATION
#define STBI_ONLY_PNG
#include <stb/stb_image.h>
#ifdef __GNUC__
#pragma GCC diagnostic pop
#endif

void LoadByStb(const QByteArray& png) {
    int width = 0;
    int height = 0;
    int channels = 0;
    stbi_uc* pixels = stbi_load_from_memory(reinterpret_cast<const stbi_uc*>(png.constData()),
                                            static_cast<int>(png.size()), &width, &height, &channels, 4);
    if (pixels == nullptr) {
        std::fprintf(stderr, "stb_image cannot read the picture\n");
        std::exit(1);
    }
    stbi_image_free(pixels);
}
