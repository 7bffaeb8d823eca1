// The words of the pages that tell an owner why the jukebox has stopped.
#pragma once

#include "core/run_time_error.h"

#include <QString>
#include <QStringList>

struct StopPage {
    QString title;
    QStringList lines;
    QString hint;
    // How long the page is shown unless a key or a touch closes it, in milliseconds.
    int milliseconds = 0;
};

// What follows the page of a stop.
enum class AfterStop { kEnds, kStartsAgain, kWaitsForKey };

// The page after an error that ends the program. `log` is the path of the log to look into.
StopPage PageOfStop(const ProgramStop& stop, AfterStop after, const QString& log);

// The page after an error that has left the jukebox without keys. `isKept`: credits and queue come back.
StopPage PageOfStuck(const RunTimeError& error, const QString& log, bool isKept);
