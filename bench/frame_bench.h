// The time of one whole frame beside one copy of the screen.
#pragma once

#include <QString>

// Prints rows for a theme of the screen's size and for one that is scaled up. `homeFolder` is the delivered
// home.
void BenchFrames(const QString& homeFolder);
