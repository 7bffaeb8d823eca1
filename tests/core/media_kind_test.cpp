// Telling audio from video by the last three characters of a path.
#include "core/media_kind.h"

#include <gtest/gtest.h>

namespace {

TEST(MediaKind, ThreeEndingsInAnyCaseAreVideos) {
    for (const char* path : {"a.avi", "a.AVI", "a.mpg", "a.MpG", "a.mp4", "/x/a.MP4", "avi", "noticedmpg"}) {
        EXPECT_TRUE(IsVideo(QString::fromLatin1(path))) << path;
    }
}

TEST(MediaKind, EverythingElseIsAudio) {
    for (const char* path : {"a.mp3", "a.mpeg", "a.mp44", "a.avi ", "a.avi.wav", "a.mkv", "a.webm"}) {
        EXPECT_FALSE(IsVideo(QString::fromLatin1(path))) << path;
    }
}

TEST(MediaKind, ANameBelowThreeCharactersIsAudio) {
    for (const char* path : {"", "a", "vi", "p4"}) {
        EXPECT_FALSE(IsVideo(QString::fromLatin1(path))) << path;
    }
}

} // namespace
