// stb_image as a peer, compiled in a source of its own.
#pragma once

#include <QByteArray>

// Decodes a PNG with stb_image. Stops the program when it cannot be read.
void LoadByStb(const QByteArray& png);
