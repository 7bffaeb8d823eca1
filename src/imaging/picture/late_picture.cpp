// Decodes pictures on a worker thread.
#include "imaging/picture/late_picture.h"

#include "platform/event_pump.h"

#include <atomic>
#include <exception>
#include <future>
#include <new>
#include <system_error>
#include <utility>

// The bytes of one file, waiting to be decoded. The first thread that begins decodes them: the queue's thread
// or the one that needs the picture.
class PictureTask {
public:
    PictureTask(const DecodingPorts& ports, QByteArray bytes) : ports_(ports), bytes_(std::move(bytes)) {}

    // Decodes, unless this has already begun. Never throws; Take raises the error.
    void Run() noexcept {
        if (begun_.exchange(true)) {
            return;
        }
        try {
            decoded_.set_value(Decode());
        } catch (...) {
            decoded_.set_exception(std::current_exception());
        }
    }

    // Returns the picture, once, and waits for it if necessary. Raises the error of decoding.
    c32bppDIB Take() {
        Run();
        return decoded_.get_future().get();
    }

private:
    // Without memory the picture is empty, as after any failed load.
    c32bppDIB Decode() const {
        c32bppDIB picture;
        try {
            const auto* first = reinterpret_cast<const std::uint8_t*>(bytes_.constData());
            picture.LoadPicture_Stream(ports_, {first, static_cast<std::size_t>(bytes_.size())});
            picture.PrepareRender();
        } catch (const std::bad_alloc&) {
            picture.DestroyDIB();
        }
        return picture;
    }

    DecodingPorts ports_;
    QByteArray bytes_;
    std::atomic<bool> begun_ = false;
    std::promise<c32bppDIB> decoded_;
};

PictureQueue::PictureQueue() : start_([](auto routine) { return std::jthread(std::move(routine)); }) {}

PictureQueue::~PictureQueue() {
    worker_.request_stop();
}

void PictureQueue::Add(std::shared_ptr<PictureTask> task) {
    {
        const std::lock_guard lock(mutex_);
        tasks_.push_back(std::move(task));
    }
    if (!worker_.joinable()) {
        try {
            worker_ = start_([this](const std::stop_token& stop) { Work(stop); });
        } catch (const std::system_error&) {
            WorkHere();
        }
    }
    changed_.notify_one();
}

// Only without a worker, so no other thread removes tasks.
void PictureQueue::WorkHere() {
    for (const std::shared_ptr<PictureTask>& task : std::exchange(tasks_, {})) {
        task->Run();
    }
}

void PictureQueue::ReadAhead(const PicturePorts& ports, const QStringList& paths) {
    for (const QString& path : paths) {
        if (auto bytes = ReadPictureFile(ports, path)) {
            auto task = std::make_shared<PictureTask>(ports, std::move(*bytes));
            {
                const std::lock_guard lock(mutex_);
                ahead_[path] = task;
            }
            Add(std::move(task));
        }
    }
}

std::shared_ptr<PictureTask> PictureQueue::TakeAhead(const QString& path) {
    const std::lock_guard lock(mutex_);
    const auto found = ahead_.extract(path);
    return found ? found.mapped() : nullptr;
}

void PictureQueue::ForgetAhead() {
    const std::lock_guard lock(mutex_);
    ahead_.clear();
}

void PictureQueue::Work(const std::stop_token& stop) {
    while (true) {
        std::shared_ptr<PictureTask> task;
        {
            std::unique_lock lock(mutex_);
            if (!changed_.wait(lock, stop, [this] { return !tasks_.empty(); })) {
                return;
            }
            task = std::move(tasks_.front());
            tasks_.pop_front();
        }
        // If only the queue still holds a task, its picture has been loaded again or destroyed.
        if (task.use_count() > 1) {
            task->Run();
        }
    }
}

LatePicture::LatePicture() = default;
LatePicture::~LatePicture() = default;
LatePicture::LatePicture(LatePicture&&) noexcept = default;
LatePicture& LatePicture::operator=(LatePicture&&) noexcept = default;

void LatePicture::LoadPicture_File(const PicturePorts& ports, PictureQueue& queue, const QString& FileName) {
    picture_.reset();
    pending_ = queue.TakeAhead(FileName);
    if (!pending_) {
        auto bytes = ReadPictureFile(ports, FileName);
        if (!bytes) {
            return;
        }
        pending_ = std::make_shared<PictureTask>(ports, std::move(*bytes));
        queue.Add(pending_);
    }
    ports.pump.DoEvents();
}

std::shared_ptr<const c32bppDIB> LatePicture::Shared() const {
    if (pending_) {
        picture_ = std::make_shared<c32bppDIB>(std::exchange(pending_, nullptr)->Take());
    }
    if (!picture_) {
        picture_ = std::make_shared<c32bppDIB>();
    }
    return picture_;
}
