// Pictures that are decoded on a worker thread: their first use, the events that run during loading, and
// errors on that thread.
#include "imaging/picture/late_picture.h"

#include "core/run_time_error.h"
#include "imaging/picture_test_support.h"
#include "support/error_of.h"
#include "support/home_folder.h"

#include <gtest/gtest.h>

#include <future>
#include <new>
#include <system_error>
#include <thread>

using namespace Qt::Literals::StringLiterals;

namespace {

class LatePictures : public testing::Test {
protected:
    PictureMachine machine;
    HomeFolder home;
    PictureQueue queue;
    LatePicture picture;
};

TEST_F(LatePictures, EachLoadLetsEventsThroughOnceIfThereIsAFileToTry) {
    const PicturePorts ports = machine.WithZlib();
    picture.LoadPicture_File(ports, queue, FixturePath(u"png/colour-8-plain-0.png"_s));
    EXPECT_EQ(machine.pump.calls, 1);
    EXPECT_EQ(picture.Width(), 9);
    picture.LoadPicture_File(ports, queue, home.Write(u"no picture"_s, QByteArray(57, 'x')));
    EXPECT_EQ(machine.pump.calls, 2);
    EXPECT_EQ(picture.Width(), 0);
    picture.LoadPicture_File(ports, queue, home.Write(u"short"_s, QByteArray(56, 'x')));
    picture.LoadPicture_File(ports, queue, home.Path(u"none"_s));
    EXPECT_EQ(machine.pump.calls, 2);
}

TEST_F(LatePictures, AFailedLoadForgetsTheFormerPicture) {
    const PicturePorts ports = machine.WithZlib();
    for (const bool isSettled : {true, false}) {
        picture.LoadPicture_File(ports, queue, FixturePath(u"png/colour-8-plain-0.png"_s));
        if (isSettled) {
            EXPECT_EQ(picture.Height(), 7);
        }
        picture.LoadPicture_File(ports, queue, home.Path(u"none"_s));
        EXPECT_EQ(picture.Height(), 0);
    }
}

TEST_F(LatePictures, AFileReadAheadIsTakenOnce) {
    const PicturePorts ports = machine.WithZlib();
    const QString path = home.Write(u"a"_s, Fixture(u"png/colour-8-plain-0.png"_s));
    queue.ReadAhead(ports, {path, home.Path(u"none"_s)});
    picture.LoadPicture_File(ports, queue, path);
    EXPECT_EQ(picture.Width(), 9);
    EXPECT_EQ(machine.files.Calls("ReadWhole"), 2);
    EXPECT_EQ(machine.pump.calls, 1);
    picture.LoadPicture_File(ports, queue, path);
    EXPECT_EQ(machine.files.Calls("ReadWhole"), 3);
    queue.ReadAhead(ports, {path});
    queue.ForgetAhead();
    EXPECT_EQ(queue.TakeAhead(path), nullptr);
}

// --- Failures and threads ------------------------------------------------------------------------

// A loader that records its thread and raises the error that the test sets.
struct RaisingPictures : SystemPictures {
    explicit RaisingPictures(std::function<void()> error) : raise(std::move(error)) {}

    std::unique_ptr<SystemPicture> OleLoadPicture(std::span<const std::uint8_t> /*bytes*/) override {
        called.set_value(std::this_thread::get_id());
        raise();
        return nullptr;
    }

    std::function<void()> raise;
    std::promise<std::thread::id> called;
};

// Loads a file that only the system's loader can read, and waits until the queue's thread is decoding it.
void LoadOnTheWorker(const PicturePorts& ports, RaisingPictures& pictures, PictureQueue& queue,
                     const QString& path, LatePicture& picture) {
    picture.LoadPicture_File({ports.files, ports.zlib, ports.pump, pictures}, queue, path);
    EXPECT_NE(pictures.called.get_future().get(), std::this_thread::get_id());
}

TEST_F(LatePictures, AnErrorInTheWorkerIsRaisedByTheFirstUse) {
    RaisingPictures pictures([] { throw RunTimeError(kOutOfMemory, u"why"_s); });
    LoadOnTheWorker(machine.WithZlib(), pictures, queue, home.Write(u"a"_s, QByteArray(57, 'x')), picture);
    EXPECT_EQ(ErrorOf([&] { picture.Width(); }), kOutOfMemory);
    EXPECT_EQ(picture.Width(), 0);
    picture.LoadPicture_File(machine.WithZlib(), queue, FixturePath(u"png/colour-8-plain-0.png"_s));
    EXPECT_EQ(picture.Width(), 9);
}

TEST_F(LatePictures, AnyOtherExceptionInTheWorkerIsRaisedByTheFirstUse) {
    RaisingPictures pictures([] { throw std::system_error(EAGAIN, std::generic_category()); });
    LoadOnTheWorker(machine.WithZlib(), pictures, queue, home.Write(u"a"_s, QByteArray(57, 'x')), picture);
    EXPECT_THROW(picture.Width(), std::system_error);
    EXPECT_EQ(picture.Height(), 0);
}

TEST_F(LatePictures, WithoutMemoryThePictureIsEmpty) {
    RaisingPictures pictures([] { throw std::bad_alloc(); });
    LoadOnTheWorker(machine.WithZlib(), pictures, queue, home.Write(u"a"_s, QByteArray(57, 'x')), picture);
    EXPECT_EQ(picture.Width(), 0);
}

TEST_F(LatePictures, WithoutAThreadPicturesAreDecodedOnTheCallersThread) {
    int starts = 0;
    PictureQueue threadless([&](const auto& /*routine*/) -> std::jthread {
        ++starts;
        throw std::system_error(EAGAIN, std::generic_category());
    });
    RaisingPictures pictures([] { throw RunTimeError(kOutOfMemory, u"why"_s); });
    const PicturePorts ports = machine.WithZlib();
    picture.LoadPicture_File({ports.files, ports.zlib, ports.pump, pictures}, threadless,
                             home.Write(u"a"_s, QByteArray(57, 'x')));
    auto called = pictures.called.get_future();
    ASSERT_EQ(called.wait_for(std::chrono::seconds(0)), std::future_status::ready);
    EXPECT_EQ(called.get(), std::this_thread::get_id());
    EXPECT_EQ(ErrorOf([&] { picture.Width(); }), kOutOfMemory);
    // The next picture tries to start a thread again.
    picture.LoadPicture_File(ports, threadless, FixturePath(u"png/colour-8-plain-0.png"_s));
    EXPECT_EQ(picture.Width(), 9);
    EXPECT_EQ(starts, 2);
}

// For ThreadSanitizer: the worker and the event thread open the compression library at the same time.
TEST(PictureThreads, TwoThreadsDecodeWithOneLibrary) {
    const QByteArray png = Fixture(u"png/colour-8-plain-0.png"_s);
    for (int round = 0; round < 20; ++round) {
        DlopenedZlib zlib;
        PictureLoader pictures;
        const auto decode = [&] {
            c32bppDIB picture;
            picture.LoadPicture_Stream(DecodingPorts{zlib, pictures}, SpanOf(png));
            return picture.Width();
        };
        auto other = std::async(std::launch::async, decode);
        EXPECT_EQ(decode(), 9);
        EXPECT_EQ(other.get(), 9);
    }
}

} // namespace
