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

Written Write(bool asJson, std::initializer_list<Finding> findings) {
    std::FILE* file = std::tmpfile();
    FindingReport report(file, asJson);
    for (const Finding& finding : findings) {
        report.Add(finding);
    }
    report.Finish(QStringLiteral("the theme \"x\""));
    std::rewind(file);
    std::array<char, 4096> text{};
    const std::size_t size = std::fread(text.data(), 1, text.size(), file);
    std::fclose(file);
    return {QByteArray(text.data(), static_cast<qsizetype>(size)), report.ExitCode()};
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

TEST(FindingReportTest, TextSaysWhatToDoAndCounts) {
    EXPECT_EQ(Write(false, {{Level::kWarning, Subject::kMachine, {}, QStringLiteral("No sound device."), {}},
                            {Level::kNote, Subject::kTheme, QStringLiteral("/t"), QStringLiteral("Old."),
                             QStringLiteral("Renew it.")}})
                  .text,
              "warning: machine\n    No sound device.\n"
              "note: /t\n    Old.\n    To do: Renew it.\n"
              "the theme \"x\": 0 errors, 1 warnings, 1 notes\n");
}
