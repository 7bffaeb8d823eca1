// Playing a situation with a theme on a simulated machine, and taking its picture.
#pragma once

#include "app/workshop/situations.h"

#include <QImage>
#include <QSize>
#include <QTemporaryDir>

// The picture, or what stopped the jukebox.
struct StagePicture {
    // What the console calls the frame; with the open on-screen keyboard in its middle.
    QImage picture;
    QString fault;
};

// A temporary application folder with one theme. Nothing is written outside it. Needs the toolkit, see
// Surroundings.
class Stage {
public:
    // `music` is the home's own music folder; empty for samples only.
    Stage(const QString& themeFolder, QString music);

    // Why the stage cannot be used; empty when it can.
    QString Fault() const { return fault_; }
    // Starts a jukebox on a screen of this size and carries the steps out. A screen that is higher than wide
    // has the vertical orientation. Any theme is allowed. After a signal (see TerminationSignal) there is
    // neither picture nor fault.
    StagePicture Play(const Situation& situation, const QSize& screen);

private:
    bool UsesOwnMusic(const Situation& situation) const;
    bool Prepare(const Situation& situation, const QSize& screen);

    QTemporaryDir folder_;
    QString music_;
    QString fault_;
};
