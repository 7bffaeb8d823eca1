// Findings as text or JSON.
#include "app/findings/finding_report.h"

#include "app/start/standard_error.h"
#include "core/json_text.h"
#include "core/path_text.h"

#include <algorithm>

namespace {

QString NameOf(Level level) {
    switch (level) {
    case Level::kError:
        return QStringLiteral("error");
    case Level::kWarning:
        return QStringLiteral("warning");
    default:
        return QStringLiteral("note");
    }
}

QString NameOf(Subject subject) {
    switch (subject) {
    case Subject::kMusic:
        return QStringLiteral("music");
    case Subject::kTheme:
        return QStringLiteral("theme");
    case Subject::kSettings:
        return QStringLiteral("settings");
    default:
        return QStringLiteral("machine");
    }
}

void WriteLine(std::FILE* output, const QByteArray& line) {
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), output);
    std::fputc('\n', output);
}

QByteArray JsonOf(const Finding& finding) {
    return JsonObject()
        .Add(QStringLiteral("level"), NameOf(finding.level))
        .Add(QStringLiteral("subject"), NameOf(finding.subject))
        .Add(QStringLiteral("path"), finding.path)
        .Add(QStringLiteral("text"), finding.text)
        .Add(QStringLiteral("advice"), finding.advice)
        .Text();
}

// A name can contain control characters, which would move the cursor of a terminal.
QByteArray Printable(QString text) {
    for (QChar& c : text) {
        c = c.category() == QChar::Other_Control && c != u'\n' ? QChar(u'?') : c;
    }
    return BytesOfPath(text);
}

QString WithoutLineFeeds(QString text) {
    return text.replace(u'\n', u'?');
}

QString PlaceOf(const Finding& finding) {
    return finding.path.isEmpty() ? NameOf(finding.subject) : WithoutLineFeeds(finding.path);
}

QString Indented(const QString& text) {
    return QStringLiteral("\n    ") + QString(text).replace(u'\n', QStringLiteral("\n    "));
}

QString Advice(const Finding& finding) {
    return finding.advice.isEmpty() ? QString() : Indented(QStringLiteral("To do: ") + finding.advice);
}

QString TextOf(const Finding& finding) {
    return QStringLiteral("%1: %2").arg(NameOf(finding.level), PlaceOf(finding)) + Indented(finding.text) +
           Advice(finding);
}

bool HaveOneText(const std::vector<Finding>& findings) {
    return std::all_of(findings.begin(), findings.end(),
                       [&](const Finding& finding) { return finding.text == findings.front().text; });
}

// The paths first, with the text of each unless all have the same.
QString TextOf(const std::vector<Finding>& first, std::int64_t count) {
    const bool haveOneText = HaveOneText(first);
    QString text = QStringLiteral("%1: %L2 of this kind").arg(NameOf(first.front().level)).arg(count);
    for (const Finding& finding : first) {
        text += QStringLiteral("\n    ") + PlaceOf(finding);
        if (!haveOneText) {
            text += Indented(QStringLiteral("  ") + finding.text);
        }
    }
    const auto more = count - static_cast<std::int64_t>(first.size());
    if (more > 0) {
        text += QStringLiteral("\n    and %L1 more").arg(more);
    }
    if (haveOneText) {
        text += Indented(first.front().text);
    }
    return text + Advice(first.front());
}

QString Counted(std::int64_t count, const char* what) {
    return QStringLiteral("%L1 %2%3")
        .arg(count)
        .arg(QLatin1StringView(what), count == 1 ? QString() : QStringLiteral("s"));
}

// The findings of one kind that are named.
constexpr std::size_t kNamed = 3;

} // namespace

QString SummaryOf(const FindingCounts& counts) {
    const auto [notes, warnings, errors] = counts;
    return QStringLiteral("%1, %2, %3")
        .arg(Counted(errors, "error"), Counted(warnings, "warning"), Counted(notes, "note"));
}

void FindingReport::Add(const Finding& finding) {
    const std::lock_guard lock(mutex_);
    if (isFinished_) {
        return;
    }
    ++counts_.at(static_cast<std::size_t>(finding.level));
    if (asJson_) {
        WriteLine(output_, JsonOf(finding));
    } else {
        AddToGroup(finding);
    }
}

void FindingReport::AddToGroup(const Finding& finding) {
    const QString kind = NameOf(finding.level) + NameOf(finding.subject) +
                         (finding.kind.isEmpty() ? finding.text : finding.kind);
    const auto place = places_.constFind(kind);
    const std::size_t at = place == places_.cend() ? groups_.size() : *place;
    if (at == groups_.size()) {
        places_.insert(kind, at);
        groups_.emplace_back();
    }
    Group& group = groups_[at];
    ++group.count;
    if (group.first.size() < kNamed) {
        group.first.push_back(finding);
    }
}

void FindingReport::WriteGroups(Level level) {
    for (const Group& group : groups_) {
        if (group.first.front().level == level) {
            WriteLine(output_, Printable(group.count == 1 ? TextOf(group.first.front())
                                                          : TextOf(group.first, group.count)));
        }
    }
}

void FindingReport::WriteAll(const QString& subject) {
    for (const Level level : {Level::kError, Level::kWarning, Level::kNote}) {
        WriteGroups(level);
    }
    WriteLine(output_,
              Printable(QStringLiteral("%1: %2").arg(WithoutLineFeeds(subject), SummaryOf(counts_))));
}

void FindingReport::Finish(const QString& subject) {
    const std::lock_guard lock(mutex_);
    if (isFinished_) {
        return;
    }
    isFinished_ = true;
    if (!asJson_) {
        WriteAll(subject);
    }
    std::fflush(output_);
}

void FindingReport::FinishIncomplete(const QString& subject, const QString& done) {
    const std::lock_guard lock(mutex_);
    if (isFinished_) {
        return;
    }
    isFinished_ = true;
    isIncomplete_ = true;
    const QString line =
        QStringLiteral("The check is incomplete, because it was interrupted. Looked at so far: %1.")
            .arg(done);
    if (asJson_) {
        std::fflush(output_);
        TellStandardError(line);
        return;
    }
    WriteAll(subject);
    WriteLine(output_, Printable(line));
    std::fflush(output_);
}

bool FindingReport::IsIncomplete() const {
    const std::lock_guard lock(mutex_);
    return isIncomplete_;
}

int FindingReport::ExitCode() const {
    const std::lock_guard lock(mutex_);
    if (counts_[static_cast<std::size_t>(Level::kError)] > 0) {
        return 2;
    }
    return counts_[static_cast<std::size_t>(Level::kWarning)] > 0 ? 1 : 0;
}
