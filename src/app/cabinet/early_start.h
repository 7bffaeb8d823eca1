// Work for the first frame that starts before there is a screen.
#pragma once

#include "imaging/picture/late_picture.h"
#include "platform/event_pump.h"
#include "platform/pictures/picture_loader.h"
#include "platform/posix/dlopened_zlib.h"
#include "platform/posix/posix_files.h"

#include <QString>

#include <functional>
#include <future>
#include <memory>

// Runs a routine that only saves time later on a separate thread; does nothing when the system has no more
// threads. The destructor of the result waits for the routine.
std::future<void> RunAlongside(std::function<void()> routine);

// Uses the processor while the toolkit connects to the screen: reads the fonts and the decoders' registry,
// and decodes the pictures of the theme that config.ini names. Outlives the jukebox.
class EarlyStart {
public:
    // `share` is the folder of the delivered files; empty when there is none.
    EarlyStart(const QString& appFolder, const QString& share);
    // Moves out the queue that decodes the pictures; call it once.
    std::unique_ptr<PictureQueue> TakePictures() { return std::move(queue_); }

private:
    // Does nothing: nobody can receive events yet.
    struct NoEvents : EventPump {
        void DoEvents() override {}
        void Wait(double /*milliseconds*/) override {}
    };

    PosixFiles files_;
    DlopenedZlib zlib_;
    NoEvents pump_;
    PictureLoader pictures_;
    std::unique_ptr<PictureQueue> queue_ = std::make_unique<PictureQueue>();
    // Its destructor waits for the routine.
    std::future<void> libraries_;
};
