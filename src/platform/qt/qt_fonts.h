// Registering the theme's fonts with the toolkit.
#pragma once

#include "platform/fonts.h"

struct Files;

class QtFonts : public Fonts {
public:
    explicit QtFonts(Files& files) : files_(files) {}

    int AddFontResource(const QString& path) override;

private:
    Files& files_;
};
