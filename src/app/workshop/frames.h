// Writing pictures of a theme in every situation.
#pragma once

#include "app/findings/finding.h"

#include <QSize>
#include <QString>

#include <vector>

struct FramesOrder {
    QString themeFolder;
    // The folder for the pictures; it is made when it does not exist.
    QString target;
    // The home's own music folder; empty for samples only.
    QString music;
    // Sizes of the screen; empty for a choice of common ones.
    std::vector<QSize> sizes;
};

struct FramesResult {
    int pictures = 0;
    // Situations that stop the jukebox, and files that cannot be written.
    std::vector<Finding> findings;
    // A signal (see TerminationSignal) has come before everything was written. Each file is complete.
    bool isInterrupted = false;
};

// Writes a picture of each situation on each screen, named like "1920x1080-first.png", and a sheet of all of
// them, "index.png". Writes nothing outside the target.
FramesResult WriteFrames(const FramesOrder& order);
