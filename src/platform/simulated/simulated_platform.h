// A complete simulated machine: every port of the jukebox, on a simulated clock, able to fail on demand.
#pragma once

#include "platform/pictures/picture_loader.h"
#include "platform/ports.h"
#include "platform/posix/dlopened_zlib.h"
#include "platform/posix/posix_files.h"
#include "platform/simulated/calls.h"
#include "platform/simulated/simulated_media.h"
#include "platform/simulated/simulated_resources.h"
#include "platform/simulated/simulated_screen.h"
#include "platform/simulated/simulated_serial.h"
#include "platform/simulated/simulated_time.h"

#include <QDateTime>
#include <QRect>
#include <QStringList>

#include <vector>

struct SimulationOptions {
    // The monitors, primary monitor first; at least one.
    std::vector<QRect> screens = {QRect(0, 0, 1280, 720)};
    // The local time at the start.
    QDateTime clock = QDateTime(QDate(2000, 1, 1), QTime(0, 0), Qt::UTC);
    // Operations that fail whenever they are called.
    QStringList failing;
};

// The parts are public for the code that drives the simulation. Files are real. The platform outlives every
// form that uses its ports.
class SimulatedPlatform {
public:
    explicit SimulatedPlatform(const SimulationOptions& options = {});
    SimulatedPlatform(const SimulatedPlatform&) = delete;
    SimulatedPlatform& operator=(const SimulatedPlatform&) = delete;

    Ports ports();

    Failures failures;
    CallRecord calls;
    PosixFiles realFiles;
    DlopenedZlib realZlib;
    PictureLoader realPictures;

    SimulatedClock clock;
    SimulatedPump pump;
    SimulatedAudio audio;
    SimulatedGraphs graphs;
    SimulatedSerial serial;
    SimulatedDisplay display;
    SimulatedWindows windows;
    SimulatedFiles files;
    SimulatedFonts fonts;
    SimulatedMessageBox messageBox;
    SimulatedDialogs dialogs;
    SimulatedZlib zlib;
    SimulatedPictures pictures;
};
