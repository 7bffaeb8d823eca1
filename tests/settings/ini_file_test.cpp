// Reading and changing keys of INI files.
#include "settings/ini_file.h"

#include <gtest/gtest.h>

namespace {

std::string Value(const QByteArray& bytes, const char* section, const char* key) {
    return IniFile(bytes).Value(QString::fromUtf8(section), QString::fromUtf8(key)).toStdString();
}

std::string After(const QByteArray& bytes, const QString& section, const QString& key, const QString& value) {
    IniFile file(bytes);
    file.SetValue(section, key, value);
    return file.Bytes().toStdString();
}

std::string After(const QByteArray& bytes, const char* section, const char* key, const char* value) {
    return After(bytes, QString::fromUtf8(section), QString::fromUtf8(key), QString::fromUtf8(value));
}

TEST(IniFileReading, FindsAValueWhateverTheCaseOfSectionAndKey) {
    EXPECT_EQ(Value("[Main]\r\nTactileMode=true\r\n", "MAIN", "tactilemode"), "true");
    EXPECT_EQ(Value("[main]\r\nTACTILEMODE=true\r\n", "Main", "TactileMode"), "true");
}

TEST(IniFileReading, ComparesLettersBeyondAsciiWithoutCaseToo) {
    EXPECT_EQ(Value("[S]\n\xC3\x89T\xC3\x89.mp3=3\n", "S", "été.MP3"), "3");
    EXPECT_EQ(Value("[\xC3\x89]\nk=3\n", "é", "K"), "3");
    EXPECT_EQ(Value("[S]\n\xE2\x84\xAA=3\n", "S", "k"), "3") << "the Kelvin sign folds to k";
    EXPECT_EQ(Value("[S]\nk=3\n", "S", "\xE2\x84\xAA"), "3");
    EXPECT_EQ(Value("[S]\n\xF0\x90\x90\x80=3\n", "S", "\xF0\x90\x90\xA8"), "3") << "a letter above U+FFFF";
}

TEST(IniFileReading, EachLetterIsComparedByItself) {
    const QByteArray file = "[S]\n\xC3\x9F=sharp\nss=two\n";
    EXPECT_EQ(Value(file, "S", "\xC3\x9F"), "sharp");
    EXPECT_EQ(Value(file, "S", "SS"), "two");
    int letters = 0;
    for (char32_t code = 0x80; code <= QChar::LastValidCodePoint; ++code) {
        const char32_t folded = QChar::toCaseFolded(code);
        if (folded != code) {
            const QString key = QString::fromUcs4(&code, 1);
            const QString asked = QString::fromUcs4(&folded, 1);
            ASSERT_EQ(IniFile("[S]\n" + key.toUtf8() + "=1\n").Value(u"S", asked), QStringLiteral("1"))
                << static_cast<std::uint32_t>(code);
            ASSERT_EQ(IniFile("[S]\n" + asked.toUtf8() + "=1\n").Value(u"S", key), QStringLiteral("1"))
                << static_cast<std::uint32_t>(code);
            ++letters;
        }
    }
    EXPECT_GT(letters, 1000);
}

TEST(IniFileReading, AByteOrderMarkInFrontOfANameOrValueIsNotPartOfIt) {
    const QByteArray mark = "\xEF\xBB\xBF";
    const QByteArray file =
        mark + mark + "[A]\n[" + mark + "B]\n" + mark + "k=" + mark + "1\nz=\xED\xB2\x80" + mark;
    EXPECT_EQ(Value(file, "B", "k"), "1");
    EXPECT_EQ(Value(file, "A", "k"), "") << "a second mark of the file is text before the bracket";
    EXPECT_EQ(IniFile(file).Bytes(), file) << "no byte of the file is lost";
}

TEST(IniFileReading, TellsSimilarNamesApart) {
    const QByteArray file = "[A]\n@=at\n`=tick\n [=open\nabcdefgh=8\nabcdefghi=9\nabcdefgz=z\n";
    EXPECT_EQ(Value(file, "A", "@"), "at");
    EXPECT_EQ(Value(file, "A", "`"), "tick");
    EXPECT_EQ(Value(file, "A", "ABCDEFGH"), "8");
    EXPECT_EQ(Value(file, "A", "ABCDEFGHI"), "9");
    EXPECT_EQ(Value(file, "A", "abcdefgz"), "z");
    EXPECT_EQ(Value(file, "A", "abcdefg"), "");
    EXPECT_EQ(Value("[A]\na=1\nab=2\nabc=3\nabcd=4\nabcdefg=7\n", "A", "abc"), "3");
    EXPECT_EQ(Value("[A]\na=1\nab=2\nabc=3\nabcd=4\nabcdefg=7\n", "A", "abcdefg"), "7");
}

TEST(IniFileReading, TheFirstSectionAndTheFirstKeyWin) {
    EXPECT_EQ(Value("[A]\nk=1\nk=2\n[B]\nk=3\n[a]\nk=4\nz=5\n", "A", "k"), "1");
    EXPECT_EQ(Value("[A]\nk=1\n[B]\nk=3\n[a]\nz=5\n", "A", "z"), "")
        << "a second section of the same name is not read";
    EXPECT_EQ(Value("[A]\nk=1\n[a]\nz=5\n[B]\nz=6\n", "B", "z"), "6");
}

TEST(IniFileReading, MissingThingsAreEmpty) {
    EXPECT_EQ(Value("", "A", "k"), "");
    EXPECT_EQ(Value("[A]\nk=1\n", "B", "k"), "");
    EXPECT_EQ(Value("[A]\nk=1\n", "A", "z"), "");
    EXPECT_EQ(Value("[A]\nk=\n", "A", "k"), "");
    EXPECT_EQ(Value("[A]\nk=1\n", "", ""), "");
}

TEST(IniFileReading, KeysAboveTheFirstSectionBelongToNone) {
    EXPECT_EQ(Value("k=0\n[A]\nk=1\n", "", "k"), "");
    EXPECT_EQ(Value("k=0\n[]\nk=1\n", "", "k"), "1");
}

TEST(IniFileReading, BlanksAroundNamesAndBehindTheEqualsSignAreDropped) {
    EXPECT_EQ(Value("[ A b ]\n \tkey one \t= \t1\n", "A b", "key one"), "1");
    EXPECT_EQ(Value("  [A]  \nk=1\n", "A", "k"), "1");
    EXPECT_EQ(Value("[A]\nk=1\n", " A ", "\tk "), "1");
}

TEST(IniFileReading, TrailingBlanksOfAValueStay) {
    EXPECT_EQ(Value("[A]\nk=true  \r\nz=1\n", "A", "k"), "true  ");
    EXPECT_EQ(Value("[A]\nk=true \t", "A", "k"), "true \t");
    EXPECT_EQ(Value("[A]\nk=   \n", "A", "k"), "");
}

TEST(IniFileReading, QuotesAndCommentSignsInAValueArePartOfIt) {
    EXPECT_EQ(Value("[A]\nk=\"a b\"\n", "A", "k"), "\"a b\"");
    EXPECT_EQ(Value("[A]\nk='x'\n", "A", "k"), "'x'");
    EXPECT_EQ(Value("[A]\nk=1;2 # 3\n", "A", "k"), "1;2 # 3");
    EXPECT_EQ(Value("[A]\nk=a=b\n", "A", "k"), "a=b");
    EXPECT_EQ(Value("[A]\nk=[B]\nz=1\n", "A", "z"), "1");
}

TEST(IniFileReading, ACommentHasItsSignAtTheVeryStartOfTheLine) {
    EXPECT_EQ(Value("[A]\n;k=1\n#k=2\nk=3\n", "A", "k"), "3");
    EXPECT_EQ(Value("[A]\n;k=1\n", "A", ";k"), "");
    EXPECT_EQ(Value("[A]\n #k=1\n", "A", "#k"), "1");
    EXPECT_EQ(Value(";[A]\nk=1\n", "A", "k"), "");
}

TEST(IniFileReading, AValueHasAtMost254Characters) {
    const QByteArray line(300, 'x');
    EXPECT_EQ(Value("[A]\nk=" + line + "\n", "A", "k").size(), 254U);
    const QString accents(300, QChar(0xE9));
    EXPECT_EQ(IniFile("[A]\nk=" + accents.toUtf8()).Value(u"A", u"k"), accents.left(254));
    EXPECT_EQ(IniFile("[A]\nk=" + accents.toLatin1()).Value(u"A", u"k"), accents.left(254));
    const QString notes = QString::fromUtf8("\xF0\x9F\x8E\xB5").repeated(200);
    EXPECT_EQ(IniFile("[A]\nk=" + notes.toUtf8()).Value(u"A", u"k"), notes.left(254));
    EXPECT_EQ(IniFile("[A]\nk=x" + notes.toUtf8()).Value(u"A", u"k"), u'x' + notes.left(252))
        << "a surrogate pair is not split";
}

TEST(IniFileReading, EveryKindOfLineEnd) {
    for (const char* const end : {"\n", "\r\n", "\r"}) {
        const QByteArray file = QByteArray("[A]") + end + "k=1" + end + end + "z=2";
        EXPECT_EQ(Value(file, "A", "k"), "1");
        EXPECT_EQ(Value(file, "A", "z"), "2") << "the last line has no line end";
    }
}

TEST(IniFileReading, AByteOrderMarkIsSkipped) {
    EXPECT_EQ(Value("\xEF\xBB\xBF[A]\nk=\xC3\xA9\n", "A", "k"), "é");
    EXPECT_EQ(Value("\xEF\xBB\xBF", "A", "k"), "");
    EXPECT_EQ(Value("\xEF\xBB\xBF[A]\nk=\xE9\n", "A", "k"), "é") << "a byte order mark before Windows-1252";
}

TEST(IniFileReading, InvalidUtf8IsWindows1252) {
    EXPECT_EQ(Value("[A]\nk=\xE9t\xE9 \x80 \x92\x9F\n", "A", "k"), "été € ’Ÿ");
    EXPECT_EQ(Value("[\xC9]\n\xC9=1\n", "é", "é"), "1");
    EXPECT_EQ(IniFile("[A]\nk=\x81\x8D\x8F\x90\x9D\n").Value(u"A", u"k"),
              QString::fromUtf16(u"\u0081\u008D\u008F\u0090\u009D"));
}

TEST(IniFileReading, OddLinesDoNoHarm) {
    EXPECT_EQ(Value("[A\nk=1\n", "A", "k"), "1") << "a section without a closing bracket";
    EXPECT_EQ(Value("[A]\nno value\n=5\n\n \t\nk=1\n", "A", "k"), "1");
    EXPECT_EQ(Value("[A]\n=5\n", "A", ""), "");
    EXPECT_EQ(Value("[A] ; rest\nk=1\n", "A", "k"), "1");
    EXPECT_EQ(Value("[/music/Live [2004]]\nk=1\n", "/music/Live [2004]", "k"), "1")
        << "the last bracket ends the name";
    EXPECT_EQ(Value(QByteArray("[A]\n\0k=1\nz=a\0b\n\0\0\0", 18), "A", "z").size(), 3U);
    EXPECT_EQ(IniFile(QByteArray("[A]\nz=a\0b\n", 10)).Value(u"A", u"z"), QString::fromLatin1("a\0b", 3));
    EXPECT_EQ(Value("[", "", "k"), "");
    EXPECT_EQ(Value("[]]\nk=1", "]", "k"), "1");
}

TEST(IniFileReading, ManyKeysAreAllFound) {
    QByteArray bytes = "[PayingCount]\r\n";
    for (int i = 0; i < 5000; ++i) {
        bytes += "Track " + QByteArray::number(i) + ".mp3=" + QByteArray::number(i) + "\r\n";
    }
    const IniFile file(bytes);
    for (int i = 0; i < 5000; ++i) {
        ASSERT_EQ(file.Value(u"payingcount", QStringLiteral("TRACK %1.MP3").arg(i)), QString::number(i));
    }
}

TEST(IniFileReading, ASectionAskedForBeforeIsNotMistaken) {
    const IniFile file("[]\nk=0\n[A]\nk=1\n[B]\nk=2\n");
    EXPECT_EQ(file.Value(u"", u"k"), QStringLiteral("0"));
    EXPECT_EQ(file.Value(u"A", u"k"), QStringLiteral("1"));
    EXPECT_EQ(file.Value(u"C", u"k"), QString());
    EXPECT_EQ(file.Value(u"B", u"k"), QStringLiteral("2"));
    EXPECT_EQ(file.Value(u"a", u"k"), QStringLiteral("1"));
}

TEST(IniFileWriting, ReplacesAValueAndNothingElse) {
    EXPECT_EQ(After("; top\r\n[A]\r\n K = old  \r\nz=1\r\n\r\n[B]\r\nk=2", "a", "k", "new"),
              "; top\r\n[A]\r\n K = new\r\nz=1\r\n\r\n[B]\r\nk=2");
    EXPECT_EQ(After("[A]\nk=\n", "A", "k", "1"), "[A]\nk=1\n");
    EXPECT_EQ(After("[A]\nk=1", "A", "k", ""), "[A]\nk=");
    EXPECT_EQ(After("[A]\nk = 1\n", "A", "k", "  2 "), "[A]\nk = 2 \n");
    EXPECT_EQ(After("[A]\nk=1\nk=2\n[a]\nk=3\n", "A", "k", "9"), "[A]\nk=9\nk=2\n[a]\nk=3\n");
    EXPECT_EQ(After("[A]\n;k=1\nk=2\n", "A", "k", "9"), "[A]\n;k=1\nk=9\n");
}

TEST(IniFileWriting, ANewKeyGoesBehindTheLastLineOfItsSection) {
    EXPECT_EQ(After("[A]\nk=1\n\n\n[B]\nz=2\n", "A", "n", "9"), "[A]\nk=1\nn=9\n\n\n[B]\nz=2\n");
    EXPECT_EQ(After("[A]\n; note\n \t\n[B]\n", "A", "n", "9"), "[A]\n; note\nn=9\n \t\n[B]\n");
    EXPECT_EQ(After("[A]\n[B]\n", "A", "n", "9"), "[A]\nn=9\n[B]\n");
    EXPECT_EQ(After("[A]\nk=1", "A", "n", "9"), "[A]\nk=1\nn=9\n");
    EXPECT_EQ(After("[A]", "A", "n", "9"), "[A]\r\nn=9\r\n");
    EXPECT_EQ(After("[A]\nk=1\n[B]\n[A]\nn=2\n", "A", "n", "9"), "[A]\nk=1\nn=9\n[B]\n[A]\nn=2\n");
}

TEST(IniFileWriting, ANewSectionGoesToTheEnd) {
    EXPECT_EQ(After("[A]\nk=1\n", "B", "n", "9"), "[A]\nk=1\n[B]\nn=9\n");
    EXPECT_EQ(After("[A]\nk=1", "B", "n", "9"), "[A]\nk=1\n[B]\nn=9\n");
    EXPECT_EQ(After("", "B", "n", "9"), "[B]\r\nn=9\r\n");
    EXPECT_EQ(After("\xEF\xBB\xBF", "B", "n", "9"), "\xEF\xBB\xBF[B]\r\nn=9\r\n");
}

TEST(IniFileWriting, TheFilesOwnLineEndIsUsed) {
    EXPECT_EQ(After("[A]\r\nk=1\n", "A", "n", "9"), "[A]\r\nk=1\nn=9\r\n");
    EXPECT_EQ(After("[A]\rk=1\r", "A", "n", "9"), "[A]\rk=1\rn=9\r");
    EXPECT_EQ(After("[A]\nk=1\r\n", "A", "n", "9"), "[A]\nk=1\r\nn=9\n");
}

TEST(IniFileWriting, ALineEndThatJoinsWithAnEmptyLineIsOne) {
    IniFile file("[A]\rk=1\n\n[B]\r");
    file.SetValue(QStringLiteral("A"), QStringLiteral("n"), QStringLiteral("9"));
    EXPECT_EQ(file.Bytes(), "[A]\rk=1\nn=9\r\n[B]\r");
    file.SetValue(QStringLiteral("A"), QStringLiteral("m"), QStringLiteral("8"));
    EXPECT_EQ(file.Bytes(), "[A]\rk=1\nn=9\r\nm=8\r[B]\r");
}

TEST(IniFileWriting, TheEncodingStaysWhereItCan) {
    EXPECT_EQ(After("[A]\nk=\xC3\xA9\n", "A", "n", "é"), "[A]\nk=\xC3\xA9\nn=\xC3\xA9\n");
    EXPECT_EQ(After("[A]\nk=\xE9\n", "A", "n", "à €"), "[A]\nk=\xE9\nn=\xE0 \x80\n");
    EXPECT_EQ(After("[A]\nk=1\n", "A", "n", "é"), "[A]\nk=1\nn=\xC3\xA9\n");
    EXPECT_EQ(After("[A]\nk=\xE9\x81\n", "A", "n", "日"), "[A]\nk=\xC3\xA9\xC2\x81\nn=\xE6\x97\xA5\n");
    EXPECT_EQ(After("\xEF\xBB\xBF[A]\nk=\xE9\n", "A", "n", "日"),
              "\xEF\xBB\xBF[A]\nk=\xC3\xA9\nn=\xE6\x97\xA5\n");
}

TEST(IniFileWriting, AWindows1252FileThatWouldLookLikeUtf8BecomesUtf8) {
    const QString value = QString::fromUtf8("Ã©");
    EXPECT_EQ(After("[A]\nk=\xE9\n", QStringLiteral("A"), QStringLiteral("k"), value),
              "[A]\nk=\xC3\x83\xC2\xA9\n");
    EXPECT_EQ(After("[A]\nk=\xE9\n", "A", "k", "e"), "[A]\nk=e\n");
}

TEST(IniFileWriting, LineBreaksAreCut) {
    EXPECT_EQ(After("[A]\nk=1\n", "A", "k", "one\n[B]\nz=2"), "[A]\nk=one\n");
    EXPECT_EQ(After("[A]\nk=1\n", "A", "k\nz=9", "2"), "[A]\nk=2\n");
    EXPECT_EQ(After("[A]\nk=1\n", "A\r]\n", "k", "2"), "[A]\nk=2\n");
    EXPECT_EQ(After("[A]\nk=1\n", "A", "\nz", "2"), "[A]\nk=1\n") << "nothing is left of the key";
}

TEST(IniFileWriting, NamesThatLookLikeSomethingElseAreFoundAgain) {
    const QString names[] = {
        QStringLiteral("#1 Crush.mp3"),
        QStringLiteral(";x"),
        QStringLiteral("[Live] Song.mp3"),
        QStringLiteral("E=MC2.mp3"),
        QStringLiteral("[open"),
        QStringLiteral("a]"),
        QStringLiteral("[a=b]"),
        QStringLiteral("=first"),
        QString(QChar(0xDC80)) + QStringLiteral("bytes.mp3"),
        QString::fromUtf8("日本.mp3"),
        QStringLiteral("a b"),
        QStringLiteral("x]=y"),
    };
    for (const QString& section : names) {
        IniFile file("[first]\r\nk=1\r\n");
        for (const QString& key : names) {
            file.SetValue(section, key, QStringLiteral("1"));
            file.SetValue(section, key, key);
        }
        const IniFile again(file.Bytes());
        for (const QString& key : names) {
            EXPECT_EQ(again.Value(section, key), key);
        }
        EXPECT_EQ(again.Bytes().count('\n'), 3 + static_cast<int>(std::size(names))) << "one line per key";
    }
}

TEST(IniFileWriting, AFileWithBytesOfNamesStaysUtf8) {
    IniFile file("[A]\nk=\xC3\xA9\n");
    const QString name = QStringLiteral("bad") + QChar(0xDCFF);
    file.SetValue(name, name, name);
    const IniFile again(file.Bytes());
    EXPECT_EQ(again.Value(name, name), name);
    EXPECT_EQ(again.Value(u"A", u"k"), QString::fromUtf8("é"));
}

} // namespace

// Lines that a line before them hides are listed too.
TEST(IniFileLines, AllThatAreNotBlankOrAComment) {
    const std::vector<IniLine> lines = IniFile("\xEF\xBB\xBF"
                                               "above=1\r\n; comment\r\n\r\n[Main]\r\n key = "
                                               "value \r\nword\r\n# =x\r\n=y\n[Main]\nKEY=2")
                                           .Lines();
    ASSERT_EQ(lines.size(), 7U);
    EXPECT_EQ(lines[0].kind, IniLine::kKey);
    EXPECT_EQ(lines[0].section, QString());
    EXPECT_EQ(lines[1].kind, IniLine::kSection);
    EXPECT_EQ(lines[1].number, 4);
    EXPECT_EQ(lines[2].key, QStringLiteral("key"));
    EXPECT_EQ(lines[2].value, QStringLiteral("value "));
    EXPECT_EQ(lines[2].section, QStringLiteral("Main"));
    EXPECT_EQ(lines[3].kind, IniLine::kIgnored);
    EXPECT_EQ(lines[3].value, QStringLiteral("word"));
    EXPECT_EQ(lines[4].kind, IniLine::kIgnored);
    EXPECT_EQ(lines[6].number, 10);
    EXPECT_EQ(lines[6].value, QStringLiteral("2"));
}
