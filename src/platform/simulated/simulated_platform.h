// A whole simulated machine: every port of the jukebox, with our clock, able to fail on demand.
#pragma once

#include "platform/pictures/picture_loader.h"
#include "platform/ports.h"
#include "platform/posix/dlopened_zlib.h"
#include "platform/posix/posix_files.h"
#include "platform/simulated/call_record.h"
#include "platform/simulated/failures.h"
#include "platform/simulated/simulated_audio.h"
#include "platform/simulated/simulated_clock.h"
#include "platform/simulated/simulated_dialogs.h"
#include "platform/simulated/simulated_display.h"
#include "platform/simulated/simulated_files.h"
#include "platform/simulated/simulated_fonts.h"
#include "platform/simulated/simulated_graphs.h"
#include "platform/simulated/simulated_message_box.h"
#include "platform/simulated/simulated_pictures.h"
#include "platform/simulated/simulated_pump.h"
#include "platform/simulated/simulated_serial.h"
#include "platform/simulated/simulated_windows.h"
#include "platform/simulated/simulated_zlib.h"

#include <QDateTime>
#include <QRect>
#include <QStringList>

#include <vector>

struct SimulationOptions {
    // The monitors, the primary one first; at least one.
    std::vector<QRect> screens = {QRect(0, 0, 1280, 720)};
    // The local time at the start.
    QDateTime clock = QDateTime(QDate(2000, 1, 1), QTime(0, 0), Qt::UTC);
    // Operations that fail whenever they are called.
    QStringList failing;
};

// The parts are open to whoever drives the simulation. The files are the real ones. The platform outlives
// every form that hangs on its ports.
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
