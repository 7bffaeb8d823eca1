// Backups: what they contain, that they can be restored, and that nothing else can.
#include "app/home/backup.h"

#include "app/home/home_contents.h"
#include "app/home/tar_format.h"
#include "settings/home_restore.h"
#include "support/failing_files.h"
#include "support/home_folder.h"
#include "support/home_snapshot.h"

#include <gtest/gtest.h>

#include <random>

using namespace Qt::Literals::StringLiterals;

namespace {

// An archive in memory.
class MemoryArchive : public OpenFile {
public:
    explicit MemoryArchive(QByteArray bytes) : bytes_(std::move(bytes)) {}
    std::int64_t Size() const override { return bytes_.size(); }
    bool Read(std::span<std::uint8_t> to) override {
        const auto count = static_cast<qsizetype>(to.size());
        if (bytes_.size() - at_ < count) {
            return false;
        }
        std::copy_n(bytes_.constBegin() + at_, count, to.begin());
        at_ += count;
        return true;
    }

private:
    QByteArray bytes_;
    qsizetype at_ = 0;
};

struct PowerCut {};

// Stops everything at one of the operations that change something: a write leaves half a file, others
// nothing.
class CutFiles : public PosixFiles {
public:
    bool Write(const QString& path, const QByteArray& bytes, bool synced) override {
        if (IsLast()) {
            PosixFiles::Write(path, bytes.left(bytes.size() / 2), synced);
            throw PowerCut();
        }
        return PosixFiles::Write(path, bytes, synced);
    }
    bool Append(const QString& path, const QByteArray& bytes) override {
        if (IsLast()) {
            PosixFiles::Append(path, bytes.left(bytes.size() / 2));
            throw PowerCut();
        }
        return PosixFiles::Append(path, bytes);
    }
    bool Rename(const QString& from, const QString& to) override {
        Count();
        return PosixFiles::Rename(from, to);
    }
    bool Remove(const QString& path) override {
        Count();
        return PosixFiles::Remove(path);
    }
    bool RemoveTree(const QString& path) override {
        Count();
        return PosixFiles::RemoveTree(path);
    }
    bool MakeFolder(const QString& path) override {
        Count();
        return PosixFiles::MakeFolder(path);
    }

    // Operations until the power is cut.
    int left = 0;

private:
    bool IsLast() { return left-- == 0; }
    void Count() {
        if (IsLast()) {
            throw PowerCut();
        }
    }
};

class BackupTest : public testing::Test {
protected:
    QString Home() const { return box.Path(u"home"_s); }
    QString Archive() const { return box.Path(u"backup.tar"_s); }
    QString Restore(const QByteArray& bytes) {
        MemoryArchive archive(bytes);
        return RestoreBackup(files, Home(), archive);
    }
    static QString FaultOf(const QByteArray& bytes) {
        MemoryArchive archive(bytes);
        return FaultOfBackup(archive);
    }
    // A backup of a home that is filled with `mark`. The home is filled with "present" afterwards.
    QByteArray BackupOf(const QByteArray& mark) {
        FillHome(box, mark);
        EXPECT_EQ(WriteBackup(files, Home(), Archive()), QString());
        FillHome(box, "present");
        return box.Read(u"backup.tar"_s);
    }
    // An archive with one entry, and the manifest if there can be one.
    static QByteArray ArchiveOf(const QList<TarEntry>& entries) {
        QByteArray bytes;
        for (const TarEntry& entry : entries) {
            bytes += TarRecords(entry, 0);
        }
        return bytes + TarRecords({kManifestName, false, "vantorix-backup 1\n"}, 0) + TarEnd();
    }

    HomeFolder box;
    PosixFiles files;
};

TEST_F(BackupTest, RestoresEveryFileAndRemovesWhatTheBackupDoesNotHave) {
    const QByteArray backup = BackupOf("saved");
    box.Write(u"home/pathconfig.ini"_s, "new");
    box.Write(u"home/themes/own/new.png"_s, "new");
    EXPECT_EQ(Restore(backup), QString());
    const Snapshot restored = SnapshotOf(files, Home());
    FillHome(box, "saved");
    EXPECT_EQ(restored, SnapshotOf(files, Home()));
    EXPECT_EQ(restored.count(u"pathconfig.ini"_s), 0);
    EXPECT_EQ(restored.count(u"themes/own/new.png"_s), 0);
}

TEST_F(BackupTest, NamesWithAnyBytesSurvive) {
    FillHome(box, "saved");
    const QString longName(200, u'x');
    box.MakeFolder(u"home/themes/"_s + longName);
    for (const QByteArray& name :
         {QByteArray("caf\xe9"), QByteArray("two\nlines %41"), QByteArray("\xf0\x9f\x8e\xb5")}) {
        box.Write(u"home/themes/"_s + longName + u'/' + TextOfPath(name), name);
    }
    const Snapshot saved = SnapshotOf(files, Home());
    ASSERT_EQ(WriteBackup(files, Home(), Archive()), QString());
    files.RemoveTree(box.Path(u"home/themes"_s));
    EXPECT_EQ(Restore(box.Read(u"backup.tar"_s)), QString());
    EXPECT_EQ(SnapshotOf(files, Home()), saved);
}

TEST_F(BackupTest, LeavesOtherFilesAsTheyAre) {
    const QByteArray backup = BackupOf("saved");
    EXPECT_FALSE(backup.contains("vantorix.log"));
    box.Write(u"home/vantorix.log"_s, "log");
    box.Write(u"home/session.json"_s, "session");
    box.MakeFolder(u"home/music"_s);
    box.Write(u"home/music/song.mp3"_s, "song");
    EXPECT_EQ(Restore(backup), QString());
    EXPECT_EQ(box.Read(u"home/vantorix.log"_s), "log");
    EXPECT_EQ(box.Read(u"home/session.json"_s), "session");
    EXPECT_EQ(box.Read(u"home/music/song.mp3"_s), "song");
    EXPECT_FALSE(HoldsRestore(files, Home()));
}

TEST_F(BackupTest, TheStateBeforeARestoreCanBeRestored) {
    const QByteArray backup = BackupOf("saved");
    const Snapshot present = SnapshotOf(files, Home());
    EXPECT_EQ(Restore(backup), QString());
    EXPECT_NE(SnapshotOf(files, Home()), present);
    EXPECT_EQ(Restore(files.ReadWhole(BackupBeforeRestore(Home()), 1 << 20).value()), QString());
    EXPECT_EQ(SnapshotOf(files, Home()), present);
}

TEST_F(BackupTest, ACutAtAnyOperationLeavesTheOldOrTheNewStateAfterTheNextStart) {
    const QByteArray backup = BackupOf("saved");
    FillHome(box, "saved");
    const Snapshot restored = SnapshotOf(files, Home());
    FillHome(box, "present");
    const Snapshot present = SnapshotOf(files, Home());
    int old = 0;
    int exchanged = 0;
    for (int cut = 0;; ++cut) {
        CutFiles failing;
        failing.left = cut;
        bool isCut = false;
        for (int tries = 0; tries < 2; ++tries) {
            try {
                MemoryArchive archive(backup);
                if (tries == 0) {
                    RestoreBackup(failing, Home(), archive);
                } else {
                    TidyHome(failing, Home()); // another cut, in the next start
                }
            } catch (const PowerCut&) {
                isCut = true;
                failing.left = cut % 11;
            }
        }
        ASSERT_TRUE(TidyHome(files, Home()));
        const Snapshot found = SnapshotOf(files, Home());
        ASSERT_TRUE(found == present || found == restored) << "cut at operation " << cut;
        ASSERT_FALSE(HoldsRestore(files, Home()));
        (found == present ? old : exchanged) += 1;
        if (!isCut) {
            break;
        }
        FillHome(box, "present");
        ASSERT_EQ(SnapshotOf(files, Home()), present);
    }
    EXPECT_GT(old, 20);
    EXPECT_GT(exchanged, 10);
}

TEST_F(BackupTest, ACutAtAnyOperationOfABackupLeavesTheOldArchiveOrTheNewOne) {
    const QByteArray before = BackupOf("saved");
    for (int cut = 0;; ++cut) {
        CutFiles failing;
        failing.left = cut;
        bool isCut = false;
        try {
            EXPECT_EQ(WriteBackup(failing, Home(), Archive()), QString());
        } catch (const PowerCut&) {
            isCut = true;
        }
        const QByteArray found = box.Read(u"backup.tar"_s);
        ASSERT_TRUE(found == before || FaultOf(found).isEmpty()) << "cut at operation " << cut;
        if (!isCut) {
            EXPECT_NE(found, before);
            EXPECT_GT(cut, 10);
            break;
        }
        box.Write(u"backup.tar"_s, before);
    }
}

TEST_F(BackupTest, ADiskThatIsFullLeavesTheOldState) {
    const QByteArray backup = BackupOf("saved");
    const Snapshot present = SnapshotOf(files, Home());
    for (int call = 1; call < 6; ++call) {
        FailingFiles failing(files);
        failing.Fail("Write", call);
        MemoryArchive archive(backup);
        EXPECT_TRUE(RestoreBackup(failing, Home(), archive).contains(u"cannot be written"_s) || call > 5);
        EXPECT_EQ(SnapshotOf(files, Home()), present);
        EXPECT_FALSE(HoldsRestore(files, Home()));
    }
    FailingFiles failing(files);
    failing.Fail("Append", 3);
    EXPECT_TRUE(WriteBackup(failing, Home(), Archive()).contains(u"cannot be written"_s));
    EXPECT_EQ(box.Read(u"backup.tar"_s), backup);
    EXPECT_EQ(box.Count(), 2U) << "the home and the backup";
}

TEST_F(BackupTest, AFolderThatCannotBeMovedAwayLeavesTheOldState) {
    const QByteArray backup = BackupOf("saved");
    const Snapshot present = SnapshotOf(files, Home());
    // The first rename begins the exchange, the others move the old files away.
    for (int call = 1; call <= 4; ++call) {
        FailingFiles failing(files);
        failing.Fail("Rename", call, 1);
        MemoryArchive archive(backup);
        EXPECT_TRUE(RestoreBackup(failing, Home(), archive).contains(u"nothing has been changed"_s)) << call;
        EXPECT_EQ(SnapshotOf(files, Home()), present);
        EXPECT_FALSE(HoldsRestore(files, Home()));
    }
}

TEST_F(BackupTest, ALinkInTheHomeIsReplacedAndItsTargetIsLeft) {
    const QByteArray backup = BackupOf("saved");
    files.RemoveTree(box.Path(u"home/themes"_s));
    box.MakeFolder(u"elsewhere"_s);
    box.Write(u"elsewhere/theme.ini"_s, "elsewhere");
    std::filesystem::create_directory_symlink("../elsewhere",
                                              BytesOfPath(box.Path(u"home/themes"_s)).toStdString());
    files.Remove(box.Path(u"home/stats.ini"_s));
    std::filesystem::create_symlink("nowhere", BytesOfPath(box.Path(u"home/stats.ini"_s)).toStdString());
    EXPECT_EQ(Restore(backup), QString());
    EXPECT_EQ(box.Read(u"home/themes/own/theme.ini"_s), "saved");
    EXPECT_EQ(box.Read(u"home/stats.ini"_s), "saved");
    EXPECT_EQ(box.Read(u"elsewhere/theme.ini"_s), "elsewhere");
}

TEST_F(BackupTest, AHomeWithoutSettingsHasNothingToBackUp) {
    box.MakeFolder(u"home"_s);
    box.MakeFolder(u"home/themes"_s);
    EXPECT_TRUE(WriteBackup(files, Home(), Archive()).contains(u"nothing to back up"_s));
    EXPECT_EQ(box.Count(), 1U);
}

TEST_F(BackupTest, AFileThatCannotBeReadIsNamed) {
    FillHome(box, "saved");
    FailingFiles failing(files);
    failing.Fail("ReadWhole", 2);
    const QString fault = WriteBackup(failing, Home(), Archive());
    EXPECT_TRUE(fault.contains(u"home/stats.ini"_s)) << fault.toStdString();
    EXPECT_EQ(box.Count(), 1U);
}

TEST_F(BackupTest, HostileNamesAreRefused) {
    for (const QByteArray& name :
         {QByteArray("../config.ini"), QByteArray("/etc/passwd"), QByteArray("themes/../../x"),
          QByteArray("themes/./x"), QByteArray("themes//x"), QByteArray("themes/x/"), QByteArray(""),
          QByteArray("vantorix.log"), QByteArray("config.ini/x"), QByteArray("themes"),
          QByteArray("session.json"), QByteArray(".restore.new/x"),
          QByteArray("themes/") + QByteArray(300, 'x'),
          QByteArray("themes") + QByteArray("/x").repeated(40)}) {
        const QString fault = FaultOf(ArchiveOf({{name, false, "x"}}));
        EXPECT_TRUE(fault.contains(u"is not allowed"_s) || fault.contains(u"does not belong"_s))
            << name.toStdString() << ": " << fault.toStdString();
    }
    EXPECT_TRUE(FaultOf(ArchiveOf({{"config.ini", true, {}}})).contains(u"does not belong"_s));
    EXPECT_TRUE(
        FaultOf(ArchiveOf({{"stats.ini", false, "a"}, {"stats.ini", false, "b"}})).contains(u"twice"_s));
}

TEST_F(BackupTest, LinksAndDevicesAreRefused) {
    for (const char type : {'1', '2', '3', '4', '6', 'x', 'g', 'S'}) {
        QByteArray archive = ArchiveOf({{"themes/x", false, {}}});
        archive[156] = type;
        // The checksum is a sum: one byte has changed.
        const int sum = archive.mid(148, 6).toInt(nullptr, 8) - '0' + type;
        archive.replace(148, 6, QByteArray::number(sum, 8).rightJustified(6, '0'));
        const QString fault = FaultOf(archive);
        EXPECT_TRUE(fault.contains(u"\"themes/x\", at byte 0, is neither a file nor a folder"_s))
            << fault.toStdString();
    }
}

TEST_F(BackupTest, DamageIsToldWithItsPlace) {
    const QByteArray backup = BackupOf("saved");
    EXPECT_TRUE(FaultOf(QByteArray()).contains(u"cut off at byte 0"_s));
    EXPECT_TRUE(FaultOf("not an archive" + QByteArray(1000, ' ')).contains(u"byte 0 is not the start"_s));
    EXPECT_TRUE(FaultOf(backup.left(700)).contains(u"\"config.ini\": the archive is cut off at byte 700"_s));
    EXPECT_TRUE(FaultOf(backup.left(1024)).contains(u"cut off at byte 1024"_s));
    EXPECT_TRUE(FaultOf(backup.left(1024) + TarEnd()).contains(u"no vantorix-backup.txt"_s));
    QByteArray damaged = backup;
    damaged[3] = 'x';
    EXPECT_TRUE(FaultOf(damaged).contains(u"entry at byte 0 is damaged"_s));
    damaged = backup;
    damaged[514] = 'x';
    EXPECT_TRUE(FaultOf(damaged).contains(u"differs from vantorix-backup.txt"_s));
    QByteArray newer = backup;
    newer.replace("vantorix-backup 1", "vantorix-backup 2");
    EXPECT_TRUE(FaultOf(newer).contains(u"not made by this version"_s));
    // Without the first block of zeros at the end something is missing; the second one means nothing.
    for (qsizetype length = 0; length < backup.size() - 512; length += 97) {
        EXPECT_NE(FaultOf(backup.left(length)), QString()) << length;
    }
}

TEST_F(BackupTest, ASizeBeyondTheArchiveNeedsNoMemory) {
    QByteArray archive = ArchiveOf({{"themes/x", false, {}}});
    archive.replace(124, 11, "01777777777"); // 256 MB less one byte
    archive.replace(
        148, 6,
        QByteArray::number(archive.mid(148, 6).toInt(nullptr, 8) + 1 + 9 * 7, 8).rightJustified(6, '0'));
    const QString fault = FaultOf(archive);
    EXPECT_TRUE(fault.contains(u"cut off"_s)) << fault.toStdString();
}

// Damages an archive. Headers that are changed often get a checksum that fits, so that the damage is read.
QByteArray Mutant(QByteArray bytes, std::mt19937& random) {
    const auto below = [&](qsizetype limit) {
        return static_cast<qsizetype>(random() % static_cast<unsigned>(std::max<qsizetype>(limit, 1)));
    };
    const int changes = 1 + static_cast<int>(random() % 4);
    for (int i = 0; i < changes; ++i) {
        const qsizetype block = below(bytes.size() / 512) * 512;
        switch (random() % 5) {
        case 0:
            bytes[below(bytes.size())] = static_cast<char>(random());
            break;
        case 1:
            bytes.truncate(std::max<qsizetype>(below(bytes.size()), 1024));
            break;
        case 2:
            bytes.insert(block, bytes.mid(below(bytes.size() / 512) * 512, 512));
            break;
        case 3:
            bytes.replace(block, 3, "../");
            break;
        default:
            bytes[block + below(160)] = "057L/.x\0"[random() % 8];
            break;
        }
        if (random() % 2 == 0 && bytes.size() >= block + 512) {
            bytes.replace(block + 148, 8, QByteArray(8, ' '));
            int sum = 0;
            for (const char byte : bytes.mid(block, 512)) {
                sum += static_cast<unsigned char>(byte);
            }
            bytes.replace(block + 148, 8,
                          QByteArray::number(sum, 8).rightJustified(6, '0') + QByteArray("\0 ", 2));
        }
    }
    return bytes;
}

TEST_F(BackupTest, DamagedArchivesChangeNothing) {
    const QByteArray backup = BackupOf("saved");
    FillHome(box, "saved");
    const Snapshot restored = SnapshotOf(files, Home());
    FillHome(box, "present");
    const Snapshot present = SnapshotOf(files, Home());
    Snapshot around;
    AddToSnapshot(around, files, box.Path(), u"backup.tar"_s);
    std::mt19937 random(20261205);
    int refused = 0;
    constexpr int kMutants = 4000;
    for (int i = 0; i < kMutants; ++i) {
        const QString fault = FaultOf(Mutant(backup, random));
        refused += fault.isEmpty() ? 0 : 1;
    }
    EXPECT_GT(refused, kMutants / 2);
    // The reader of the second pass, without the first one.
    for (int i = 0; i < 300; ++i) {
        const bool isDone = Restore(Mutant(backup, random)).isEmpty();
        ASSERT_EQ(SnapshotOf(files, Home()), isDone ? restored : present) << i;
        ASSERT_FALSE(HoldsRestore(files, Home()));
        ASSERT_EQ(box.Count(), 2U);
        if (isDone) {
            FillHome(box, "present");
        }
    }
}

} // namespace
