// A picture that is decoded on a worker thread; its first use waits for it.
#pragma once

#include "imaging/c32bppdib.h"

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

// Decodes pictures one after another on a thread of its own. Pictures that are not used yet are decoded as
// well, so that their first use does not wait.
class PictureQueue {
public:
    // Starts a thread that runs a routine. Raises std::system_error when there can be none.
    using ThreadStarter = std::function<std::jthread(std::function<void(const std::stop_token&)> routine)>;

    PictureQueue();
    // With another way to start the thread.
    explicit PictureQueue(ThreadStarter start) : start_(std::move(start)) {}
    // Waits for the picture under way; the others are dropped.
    ~PictureQueue();
    PictureQueue(const PictureQueue&) = delete;
    PictureQueue& operator=(const PictureQueue&) = delete;

    // Without a thread the task is carried out before this returns.
    void Add(std::shared_ptr<PictureTask> task);

    // Reads and decodes files that are about to be loaded; what is missing is passed over. The ports must
    // outlive the queue. From any one thread.
    void ReadAhead(const PicturePorts& ports, const QStringList& paths);
    // The file that was read ahead, once; null when it was not.
    std::shared_ptr<PictureTask> TakeAhead(const QString& path);
    // What was read ahead and never taken is forgotten.
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

// An image object whose file is read at once and decoded later. Each use waits for the pixels; a picture that
// the queue has not begun is decoded on the caller's thread. A run-time error in the worker is raised by the
// first use, and leaves an empty object.
class LatePicture {
public:
    LatePicture();
    ~LatePicture();
    LatePicture(LatePicture&&) noexcept;
    LatePicture& operator=(LatePicture&&) noexcept;

    // As the image object's own loading, but that the answer is left open: a file that is missing, short or
    // not decodable leaves an empty object. Lets pending events run once when there was a file to try.
    void LoadPicture_File(const PicturePorts& ports, PictureQueue& queue, const QString& FileName);

    // The image object.
    const c32bppDIB& Settled() const { return *Shared(); }
    // The same, for one who keeps it while this object loads another file.
    std::shared_ptr<const c32bppDIB> Shared() const;
    operator const c32bppDIB&() const { return Settled(); } // NOLINT(google-explicit-constructor)

    int Width() const { return Settled().Width(); }
    int Height() const { return Settled().Height(); }
    // As c32bppDIB::Render, at full opacity.
    bool Render(Surface& destinationDC, int destX, int destY, int destWidth = 0, int destHeight = 0,
                int srcX = 0, int srcY = 0, int srcWidth = 0, int srcHeight = 0) const {
        return Settled().Render(destinationDC, destX, destY, destWidth, destHeight, srcX, srcY, srcWidth,
                                srcHeight);
    }

private:
    mutable std::shared_ptr<c32bppDIB> picture_;
    mutable std::shared_ptr<PictureTask> pending_;
};
