// Pictures that are decoded beside the event thread: what is there when they are asked for, and the events
// that loading lets through.
#include "imaging/late_picture.h"

#include "imaging/picture_test_support.h"
#include "support/home_folder.h"

#include <gtest/gtest.h>

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

} // namespace
