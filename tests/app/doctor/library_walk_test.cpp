// Tests of the walk through a library.
#include "app/doctor/library_walk.h"
#include "support/home_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include <sys/stat.h>

namespace {

using testing::ElementsAre;

struct Walked {
    QStringList folders;
    QStringList loops;
    QStringList again;
    std::vector<WalkEntry> entries;
    int error = 0;
};

Walked Walk(const QString& root) {
    Walked walked;
    const auto name = [&](const QString& path) { return path.mid(root.size()); };
    WalkVisitor visitor;
    visitor.visit = [&](const WalkedFolder& folder) {
        walked.folders += name(folder.path);
        walked.error = folder.error != 0 ? folder.error : walked.error;
        walked.entries.insert(walked.entries.end(), folder.entries.begin(), folder.entries.end());
    };
    visitor.enters = [](const QString&, const QString& folder) { return folder != u"skipped"; };
    visitor.atLoop = [&](const QString& link, const QString&) { walked.loops += name(link); };
    visitor.atSecondPath = [&](const QString& path) { walked.again += name(path); };
    WalkLibrary(root, visitor);
    return walked;
}

} // namespace

TEST(LibraryWalkTest, VisitsFoldersInTheOrderOfTheirNames) {
    HomeFolder home;
    for (const char* const folder : {"b/c", "a", "skipped/d"}) {
        QDir().mkpath(home.Path(QString::fromLatin1(folder)));
    }
    EXPECT_THAT(Walk(home.Path()).folders,
                ElementsAre(QString(), QStringLiteral("/a"), QStringLiteral("/b"), QStringLiteral("/b/c")));
}

TEST(LibraryWalkTest, EndsAtLinksToTheFoldersAbove) {
    HomeFolder home;
    QDir().mkpath(home.Path(QStringLiteral("music/a")));
    QFile::link(home.Path(QStringLiteral("music/a")), home.Path(QStringLiteral("music/a/self")));
    QFile::link(home.Path(QStringLiteral("music")), home.Path(QStringLiteral("music/a/top")));
    // Leads out of the library and back into it.
    QFile::link(QStringLiteral("/"), home.Path(QStringLiteral("music/a/root")));
    QFile::link(home.Path(QStringLiteral("music/a")), home.Path(QStringLiteral("music/b")));
    const Walked walked = Walk(home.Path(QStringLiteral("music")));
    EXPECT_THAT(walked.folders, ElementsAre(QString(), QStringLiteral("/a")));
    EXPECT_THAT(walked.loops,
                ElementsAre(QStringLiteral("/a/root"), QStringLiteral("/a/self"), QStringLiteral("/a/top")));
    EXPECT_THAT(walked.again, ElementsAre(QStringLiteral("/b")));
}

TEST(LibraryWalkTest, TellsFilesLinksAndPipesApart) {
    HomeFolder home;
    home.Write(QStringLiteral("a"), "12345");
    QFile::link(QStringLiteral("/nowhere"), home.Path(QStringLiteral("b")));
    QFile::link(home.Path(QStringLiteral("a")), home.Path(QStringLiteral("c")));
    ASSERT_EQ(::mkfifo(home.Path(QStringLiteral("d")).toUtf8().constData(), 0600), 0);
    const Walked walked = Walk(home.Path());
    ASSERT_EQ(walked.entries.size(), 4U);
    EXPECT_EQ(walked.entries[0].kind, EntryKind::kFile);
    EXPECT_EQ(walked.entries[0].size, 5);
    EXPECT_TRUE(walked.entries[0].isReadable);
    EXPECT_EQ(walked.entries[1].kind, EntryKind::kBrokenLink);
    EXPECT_EQ(walked.entries[2].kind, EntryKind::kFile);
    EXPECT_TRUE(walked.entries[2].isLink);
    EXPECT_EQ(walked.entries[3].kind, EntryKind::kOther);
}

TEST(LibraryWalkTest, AFolderThatHasVanishedIsAnError) {
    const Walked walked = Walk(QStringLiteral("/nowhere/at/all"));
    EXPECT_EQ(walked.folders.size(), 1);
    EXPECT_EQ(walked.error, ENOENT);
}
