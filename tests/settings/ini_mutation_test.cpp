// INI files made of random bytes, and random changes to them.
#include "settings/ini_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <utility>
#include <vector>

namespace {

constexpr int kRounds = 20'000;

class Chance {
public:
    explicit Chance(unsigned seed) : random_(seed) {}

    // A random number from 0 to below - 1.
    int Below(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }

    QByteArray Bytes() {
        static const QByteArray pieces[] = {
            "[Main]",
            "\n",
            "\r\n",
            "\r",
            "=",
            "key",
            "Key=1",
            ";",
            "#",
            " ",
            "\t",
            "]",
            "[",
            "\0",
            "x",
            "\"",
            "\xE9",
            "\x81",
            "\xC3",
            "\xC3\xA9",
            "\xEF",
            "\xEF\xBB\xBF",
            "\xED\xB2",
            "\xED\xB2\x80",
            "\xF0\x9F\x8E\xB5",
            "[main]\nkey=2",
            "StartPath=/music",
        };
        QByteArray bytes;
        for (int i = Below(24); i > 0; --i) {
            bytes += Below(6) == 0 ? QByteArray(1, static_cast<char>(Below(256)))
                                   : pieces[Below(static_cast<int>(std::size(pieces)))];
        }
        return bytes;
    }

    QString Text() {
        static const QString pieces[] = {
            QStringLiteral("key"), QStringLiteral("Main"), QStringLiteral(" "),  QStringLiteral("="),
            QStringLiteral("["),   QStringLiteral("]"),    QStringLiteral(";"),  QStringLiteral("#"),
            QStringLiteral("é"),   QStringLiteral("€"),    QStringLiteral("日"), QStringLiteral("\t"),
            QStringLiteral("Ã©"),  QString(QChar(0xDC81)), QString(QChar(0)),    QStringLiteral("\n"),
            QStringLiteral("\r"),  QStringLiteral("x"),    QStringLiteral("𝄞"),  QStringLiteral("K"),
        };
        QString text;
        for (int i = Below(6); i > 0; --i) {
            text += pieces[Below(static_cast<int>(std::size(pieces)))];
        }
        return text;
    }

private:
    std::mt19937 random_;
};

// Returns a value as it is read back after it was set: its first line without leading blanks.
QString AsRead(const QString& value) {
    qsizetype begin = 0;
    const auto end = std::min(value.indexOf(u'\n') < 0 ? value.size() : value.indexOf(u'\n'),
                              value.indexOf(u'\r') < 0 ? value.size() : value.indexOf(u'\r'));
    while (begin < end && (value[begin] == u' ' || value[begin] == u'\t')) {
        ++begin;
    }
    return value.mid(begin, end - begin);
}

bool IsBlankName(const QString& name) {
    return AsRead(name).isEmpty();
}

TEST(IniFileMutation, WhatWasSetIsReadAgainAndOtherKeysStay) {
    Chance chance(20);
    for (int round = 0; round < kRounds; ++round) {
        IniFile file(chance.Bytes());
        const QByteArray before = file.Bytes();
        const QString section = chance.Text();
        const QString key = chance.Text();
        const QString value = chance.Text();
        const QString other = file.Value(u"Main", u"StartPath");
        file.SetValue(section, key, value);
        if (IsBlankName(key)) {
            EXPECT_EQ(file.Bytes(), before);
            continue;
        }
        const IniFile again(file.Bytes());
        ASSERT_EQ(file.Value(section, key), AsRead(value)) << round;
        ASSERT_EQ(again.Value(section, key), AsRead(value))
            << round << " " << file.Bytes().toHex().toStdString();
        ASSERT_EQ(again.Value(u"Main", u"StartPath"), other) << round;
    }
}

TEST(IniFileMutation, SettingTheSameValueTwiceChangesNothingMore) {
    Chance chance(21);
    for (int round = 0; round < kRounds; ++round) {
        IniFile file(chance.Bytes());
        const QString section = chance.Text();
        const QString key = chance.Text();
        const QString value = chance.Text();
        file.SetValue(section, key, value);
        const QByteArray once = file.Bytes();
        file.SetValue(section, key, value);
        ASSERT_EQ(file.Bytes(), once) << round;
    }
}

// Compares a file that is changed many times in place with one that is parsed again after each change.
TEST(IniFileMutation, ManyChangesLeaveWhatAFreshParseFinds) {
    Chance chance(23);
    for (int round = 0; round < kRounds / 10; ++round) {
        const QByteArray bytes = chance.Bytes();
        IniFile kept(bytes);
        IniFile fresh(bytes);
        std::vector<std::pair<QString, QString>> keys = {
            {QStringLiteral("Main"), QStringLiteral("StartPath")}};
        for (int change = 0; change < 12; ++change) {
            const bool again = chance.Below(3) == 0;
            const auto name =
                again ? keys[static_cast<std::size_t>(chance.Below(static_cast<int>(keys.size())))]
                      : std::pair(chance.Text(), chance.Text());
            const QString value = chance.Text();
            kept.SetValue(name.first, name.second, value);
            fresh.SetValue(name.first, name.second, value);
            fresh = IniFile(fresh.Bytes());
            keys.push_back(name);
            ASSERT_EQ(kept.Bytes(), fresh.Bytes()) << round << " " << bytes.toHex().toStdString();
            for (const auto& [section, key] : keys) {
                ASSERT_EQ(kept.Value(section, key), fresh.Value(section, key)) << round;
            }
        }
    }
}

TEST(IniFileMutation, AllBytesStayWhenTheEncodingCan) {
    Chance chance(22);
    for (int round = 0; round < kRounds; ++round) {
        const QByteArray bytes = chance.Bytes();
        IniFile file(bytes);
        file.SetValue(QStringLiteral("quite new"), QStringLiteral("k"), QStringLiteral("v"));
        ASSERT_TRUE(file.Bytes().startsWith(bytes)) << round;
    }
}

TEST(IniFileMutation, AMegabyteOfAnythingIsReadAtOnce) {
    for (const char* const line :
         {"[", "=", "a=\n", "[a]\n", "\r", "[a]\nb=c\n", "\xE9", "\xC3\xA9=\n", "["}) {
        const IniFile file(QByteArray(line).repeated(1 << 18));
        EXPECT_EQ(file.Value(u"nowhere", u"nothing"), QString());
    }
}

} // namespace
