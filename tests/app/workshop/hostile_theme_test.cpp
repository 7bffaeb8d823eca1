// Tests of the theme check with damaged files: whatever a theme contains, the check ends.
#include "app/workshop/planted_theme.h"

#include <gtest/gtest.h>

#include <random>

namespace {

// Five tests of this many mutations, so that they can run side by side.
constexpr unsigned kMutations = 100;

// Puts a large number where a header may have a size.
void EnlargeASize(QByteArray& bytes, std::mt19937& random) {
    if (bytes.size() > 32) {
        bytes.replace(16 + static_cast<qsizetype>(random() % 8), 4, QByteArray("\x00\x01\xFF\xFF", 4));
    }
}

// Replaces a number of theme.ini by an extreme one.
void ChangeANumber(QByteArray& bytes, std::mt19937& random) {
    static const QByteArrayList extremes = {"32767", "-32768", "0", "-1", "99999", "1e4", "", "100", "x,y,z"};
    const qsizetype start = static_cast<qsizetype>(random() % static_cast<unsigned>(bytes.size() + 1));
    const qsizetype equals = bytes.indexOf('=', start);
    const qsizetype end = equals < 0 ? -1 : bytes.indexOf('\n', equals);
    if (end > 0) {
        bytes.replace(equals + 1, end - equals - 1,
                      extremes[static_cast<qsizetype>(random() % static_cast<unsigned>(extremes.size()))]);
    }
}

void ScatterBytes(QByteArray& bytes, std::mt19937& random) {
    for (int i = 0; i < 8 && !bytes.isEmpty(); ++i) {
        bytes[static_cast<qsizetype>(random() % static_cast<unsigned>(bytes.size()))] =
            static_cast<char>(random());
    }
}

QByteArray RandomBytes(std::mt19937& random) {
    QByteArray bytes(static_cast<qsizetype>(random() % 3000), '\0');
    for (char& byte : bytes) {
        byte = static_cast<char>(random());
    }
    return bytes;
}

QByteArray Damaged(QByteArray bytes, std::mt19937& random) {
    switch (random() % 5) {
    case 0:
        return RandomBytes(random);
    case 1:
        return bytes.left(static_cast<qsizetype>(random() % static_cast<unsigned>(bytes.size() + 1)));
    case 2:
        EnlargeASize(bytes, random);
        return bytes;
    case 3:
        ChangeANumber(bytes, random);
        return bytes;
    default:
        ScatterBytes(bytes, random);
        return bytes;
    }
}

class HostileTheme : public testing::TestWithParam<unsigned> {};

} // namespace

// The number of the mutation is the seed, so that a failure can be repeated.
TEST_P(HostileTheme, IsChecked) {
    PlantedTheme theme;
    const QStringList names = QDir(theme.Path()).entryList(QDir::Files, QDir::Name);
    const unsigned first = GetParam() * kMutations;
    for (unsigned mutation = first; mutation < first + kMutations; ++mutation) {
        SCOPED_TRACE(mutation);
        std::mt19937 random(mutation);
        // Half of the damage is in theme.ini, which decides about everything else.
        const QString name =
            random() % 2 == 0 ? QStringLiteral("theme.ini")
                              : names[static_cast<qsizetype>(random() % static_cast<unsigned>(names.size()))];
        const QByteArray before = theme.Read(name);
        theme.Write(name, Damaged(before, random));
        for (const Finding& finding : theme.Check()) {
            EXPECT_TRUE(finding.path.startsWith(theme.Path())) << finding.path.toStdString();
        }
        theme.Write(name, before);
    }
}

INSTANTIATE_TEST_SUITE_P(, HostileTheme, testing::Range(0U, 5U));
