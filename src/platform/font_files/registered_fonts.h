// Fonts that are registered with the toolkit, each once.
#pragma once

#include <QByteArray>

#include <map>

// The toolkit keeps the bytes of every font that is registered, again and again if need be. A theme is loaded
// whenever the configuration closes.
class RegisteredFonts {
public:
    // Registers the fonts in the bytes of a file unless that has been done. Returns their number, 0 if they
    // cannot be used.
    int Register(const QByteArray& bytes);

private:
    // Hash of the bytes to the number of fonts.
    std::map<QByteArray, int> registered_;
};
