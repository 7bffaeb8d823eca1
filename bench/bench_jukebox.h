// A jukebox on a simulated machine, for measuring what it draws.
#pragma once

#include "platform/simulated/simulated_platform.h"
#include "state/form_main.h"

#include <QSize>
#include <QString>
#include <QTemporaryDir>

#include <vector>

// What a jukebox shows, and on which screen.
struct BenchHome {
    // The delivered home.
    QString delivered;
    QString theme = QStringLiteral("default");
    // All numbers and pictures of the theme are multiplied by this.
    double scale = 1.0;
    QSize screen = QSize(1920, 1080);
};

// A jukebox with the default configuration and a music folder of 40 tracks. Its orientation is that of the
// screen. Load starts it and draws the first frame.
class BenchJukebox {
public:
    explicit BenchJukebox(const BenchHome& home);

    void Load();

private:
    QTemporaryDir folder_;

public:
    SimulatedPlatform platform;
    Form_Main form;
};

// Copies a picture of the screen's size.
class ScreenCopy {
public:
    explicit ScreenCopy(const QSize& screen);

    void Run();

private:
    std::vector<char> screen_;
    std::vector<char> copy_;
};
