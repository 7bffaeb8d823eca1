// Registering the theme's fonts with the toolkit.
#pragma once

#include "platform/font_files/registered_fonts.h"
#include "platform/fonts.h"

struct Files;

// Reads the system's list of fonts, which the first text would otherwise wait for. From any thread, also
// before the toolkit starts.
void ReadSystemFonts();

class QtFonts : public Fonts {
public:
    explicit QtFonts(Files& files) : files_(files) {}

    int AddFontResource(const QString& path) override;

private:
    Files& files_;
    RegisteredFonts registered_;
};
