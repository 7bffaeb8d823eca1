// Port: the theme's own fonts.
#pragma once

#include <QString>

// Event thread only.
struct Fonts {
    virtual ~Fonts() = default;

    // Makes the fonts of a file available by name for the rest of the run. Returns the number of fonts added,
    // 0 on failure.
    virtual int AddFontResource(const QString& path) = 0;
};
