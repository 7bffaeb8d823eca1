// A picture that is decoded on a worker thread; its first use waits for it.
#pragma once

#include "imaging/picture/c32bppdib.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <stop_token>
#include <thread>

class PictureTask;

// Decodes pictures one after another on its own thread. Decodes unused pictures too, so that their first use
// does not wait.
class PictureQueue {
public:
    // Starts a thread that runs a routine. Raises std::system_error when no thread can be started.
    using ThreadStarter = std::function<std::jthread(std::function<void(const std::stop_token&)> routine)>;

    PictureQueue();
    // Uses another way to start the thread.
    explicit PictureQueue(ThreadStarter start) : start_(std::move(start)) {}
    // Waits for the current picture and drops the others.
    ~PictureQueue();
    PictureQueue(const PictureQueue&) = delete;
    PictureQueue& operator=(const PictureQueue&) = delete;

    // Without a thread the task runs before this returns.
    void Add(std::shared_ptr<PictureTask> task);

    // Reads and decodes files that will be loaded soon. Skips missing files. The ports must outlive the
    // queue. May be called from any thread, but only from one at a time.
    void ReadAhead(const PicturePorts& ports, const QStringList& paths);
    // Returns the file that was read ahead, once; null when it was not.
    std::shared_ptr<PictureTask> TakeAhead(const QString& path);
    // Forgets files that were read ahead and never taken.
    void ForgetAhead();

private:
    void Work(const std::stop_token& stop);
    void WorkHere();

    const ThreadStarter start_;
    std::mutex mutex_;
    std::condition_variable_any changed_;
    std::deque<std::shared_ptr<PictureTask>> tasks_;
    std::map<QString, std::shared_ptr<PictureTask>> ahead_;
    std::jthread worker_;
};

// An image object whose file is read at once and decoded later. Each use waits for the pixels. A picture that
// the queue has not begun is decoded on the caller's thread. If the worker has a run-time error, the first
// use raises it, and the object is empty.
class LatePicture {
public:
    LatePicture();
    ~LatePicture();
    LatePicture(LatePicture&&) noexcept;
    LatePicture& operator=(LatePicture&&) noexcept;

    // Like the loading of the image object, but without a result: a file that is missing, too short or not
    // decodable leaves an empty object. Lets pending events run once if there was a file to decode.
    void LoadPicture_File(const PicturePorts& ports, PictureQueue& queue, const QString& FileName);

    // The image object.
    const c32bppDIB& Settled() const { return *Shared(); }
    // The image object, kept alive even if this object loads another file.
    std::shared_ptr<const c32bppDIB> Shared() const;
    operator const c32bppDIB&() const { return Settled(); } // NOLINT(google-explicit-constructor)

    int Width() const { return Settled().Width(); }
    int Height() const { return Settled().Height(); }
    // Like c32bppDIB::Render, at full opacity.
    bool Render(Surface& destinationDC, int destX, int destY, int destWidth = 0, int destHeight = 0,
                int srcX = 0, int srcY = 0, int srcWidth = 0, int srcHeight = 0) const {
        return Settled().Render(destinationDC, destX, destY, destWidth, destHeight, srcX, srcY, srcWidth,
                                srcHeight);
    }

private:
    mutable std::shared_ptr<c32bppDIB> picture_;
    mutable std::shared_ptr<PictureTask> pending_;
};
