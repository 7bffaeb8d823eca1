// Tests of the report of findings.
#include "app/findings/finding_report.h"

#include <gtest/gtest.h>

#include <array>
#include <initializer_list>

namespace {

struct Written {
    QByteArray text;
    int exitCode = 0;
};

// Reads a file from its start and closes it.
QByteArray TextOf(std::FILE* file) {
    std::rewind(file);
    std::array<char, 4096> text{};
    const std::size_t size = std::fread(text.data(), 1, text.size(), file);
    std::fclose(file);
    return QByteArray(text.data(), static_cast<qsizetype>(size));
}

Written Write(bool asJson, std::initializer_list<Finding> findings) {
    std::FILE* file = std::tmpfile();
    FindingReport report(file, asJson);
    for (const Finding& finding : findings) {
        report.Add(finding);
    }
    report.Finish(QStringLiteral("the theme \"x\""));
    return {TextOf(file), report.ExitCode()};
}

Finding Of(Level level) {
    return {level, Subject::kMusic, QStringLiteral("/m/a\n.ogg"), QStringLiteral("It is not listed."),
            QStringLiteral("Convert it.")};
}

} // namespace

TEST(FindingReportTest, TheWorstLevelIsTheExitCode) {
    EXPECT_EQ(Write(false, {}).exitCode, 0);
    EXPECT_EQ(Write(false, {Of(Level::kNote)}).exitCode, 0);
    EXPECT_EQ(Write(false, {Of(Level::kWarning), Of(Level::kNote)}).exitCode, 1);
    EXPECT_EQ(Write(false, {Of(Level::kError), Of(Level::kWarning)}).exitCode, 2);
}

TEST(FindingReportTest, JsonIsOneObjectALineAndNothingElse) {
    EXPECT_EQ(Write(true, {Of(Level::kError), Of(Level::kNote)}).text,
              "{\"level\":\"error\",\"subject\":\"music\",\"path\":\"/m/a\\n.ogg\",\"text\":\"It is not "
              "listed.\",\"advice\":\"Convert it.\"}\n"
              "{\"level\":\"note\",\"subject\":\"music\",\"path\":\"/m/a\\n.ogg\",\"text\":\"It is not "
              "listed.\",\"advice\":\"Convert it.\"}\n");
}

TEST(FindingReportTest, AnIncompleteReportSaysSoAndTakesNothingMore) {
    for (const bool asJson : {false, true}) {
        std::FILE* file = std::tmpfile();
        FindingReport report(file, asJson);
        report.Add(Of(Level::kNote));
        testing::internal::CaptureStderr();
        report.FinishIncomplete(QStringLiteral("/m"), QStringLiteral("2 folders"));
        report.Add(Of(Level::kError));
        report.Finish(QStringLiteral("/m"));
        const QByteArray line =
            "The check is incomplete, because it was interrupted. Looked at so far: 2 folders.\n";
        EXPECT_EQ(testing::internal::GetCapturedStderr(), asJson ? ("vantorix: " + line).toStdString() : "");
        const QByteArray text = TextOf(file);
        EXPECT_EQ(text.endsWith("/m: 0 errors, 0 warnings, 1 note\n" + line), !asJson);
        EXPECT_EQ(text.count('\n'), asJson ? 1 : 5);
        EXPECT_TRUE(report.IsIncomplete());
        EXPECT_EQ(report.ExitCode(), 0);
    }
}

TEST(FindingReportTest, TextSaysWhatToDoAndCounts) {
    EXPECT_EQ(Write(false, {{Level::kWarning, Subject::kMachine, {}, QStringLiteral("No sound device."), {}},
                            {Level::kNote, Subject::kTheme, QStringLiteral("/t"), QStringLiteral("Old."),
                             QStringLiteral("Renew it.")}})
                  .text,
              "warning: machine\n    No sound device.\n"
              "note: /t\n    Old.\n    To do: Renew it.\n"
              "the theme \"x\": 0 errors, 1 warning, 1 note\n");
}

TEST(FindingReportTest, TextBeginsWithTheWorst) {
    const QByteArray text = Write(false, {Of(Level::kNote), Of(Level::kError), Of(Level::kWarning)}).text;
    EXPECT_LT(text.indexOf("error: "), text.indexOf("warning: "));
    EXPECT_LT(text.indexOf("warning: "), text.indexOf("note: "));
}

TEST(FindingReportTest, ManyFindingsOfAKindAreOneParagraph) {
    std::FILE* file = std::tmpfile();
    FindingReport report(file, false);
    for (int i = 0; i < 1237; ++i) {
        report.Add({Level::kWarning, Subject::kMusic, QStringLiteral("/m/%1.ogg").arg(i),
                    QStringLiteral("It is not listed."), QStringLiteral("Convert %1.").arg(i)});
    }
    report.Finish(QStringLiteral("/m"));
    EXPECT_EQ(TextOf(file), "warning: 1,237 of this kind\n    /m/0.ogg\n    /m/1.ogg\n    /m/2.ogg\n"
                            "    and 1,234 more\n    It is not listed.\n    To do: Convert 0.\n"
                            "/m: 0 errors, 1,237 warnings, 0 notes\n");
}

TEST(FindingReportTest, DifferentTextsOfAKindAreAllShown) {
    std::FILE* file = std::tmpfile();
    FindingReport report(file, false);
    for (const char* const text : {"One.", "Two."}) {
        report.Add({Level::kError,
                    Subject::kMusic,
                    QStringLiteral("/m"),
                    QString::fromLatin1(text),
                    {},
                    QStringLiteral("titles")});
    }
    report.Finish(QStringLiteral("/m"));
    EXPECT_EQ(TextOf(file), "error: 2 of this kind\n    /m\n      One.\n    /m\n      Two.\n"
                            "/m: 2 errors, 0 warnings, 0 notes\n");
}

TEST(FindingReportTest, ControlCharactersOfANameDoNotReachTheTerminal) {
    const Finding finding{
        Level::kNote, Subject::kMusic, QStringLiteral("/m/\x1B[2J\n.mp3"), QStringLiteral("Hidden."), {}};
    EXPECT_TRUE(Write(false, {finding}).text.startsWith("note: /m/?[2J?.mp3\n    Hidden.\n"));
}
