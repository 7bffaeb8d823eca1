// Findings as text or JSON.
#include "app/findings/finding_report.h"

#include "core/json_text.h"
#include "core/path_text.h"

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

QByteArray TextOf(const Finding& finding) {
    const QString place = finding.path.isEmpty() ? NameOf(finding.subject) : finding.path;
    QString text = QStringLiteral("%1: %2\n    %3").arg(NameOf(finding.level), place, finding.text);
    if (!finding.advice.isEmpty()) {
        text += QStringLiteral("\n    To do: ") + finding.advice;
    }
    return BytesOfPath(text);
}

} // namespace

void FindingReport::Add(const Finding& finding) {
    ++counts_.at(static_cast<std::size_t>(finding.level));
    WriteLine(output_, asJson_ ? JsonOf(finding) : TextOf(finding));
}

void FindingReport::Finish(const QString& subject) {
    if (!asJson_) {
        const auto [notes, warnings, errors] = counts_;
        WriteLine(output_, BytesOfPath(QStringLiteral("%1: %2 errors, %3 warnings, %4 notes")
                                           .arg(subject)
                                           .arg(errors)
                                           .arg(warnings)
                                           .arg(notes)));
    }
    std::fflush(output_);
}

int FindingReport::ExitCode() const {
    if (counts_[static_cast<std::size_t>(Level::kError)] > 0) {
        return 2;
    }
    return counts_[static_cast<std::size_t>(Level::kWarning)] > 0 ? 1 : 0;
}
