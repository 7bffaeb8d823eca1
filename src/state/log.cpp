// Writing the text log.
#include "state/log.h"

#include "core/path_text.h"
#include "core/run_time_error.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "state/form_main.h"
#include "state/paths.h"

namespace {

QByteArray Stamp(Form_Main& form) {
    return form.clock.LocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")).toLatin1();
}

// Deliberate D-131: a line that cannot be written ends the program in the routines whose errors end the
// program. In other routines it ends the handler with InputBusy set. One would expect the jukebox to continue
// without a log; a log with gaps would be misleading after a crash.
[[noreturn]] void LogFailed(const Form_Main& form) {
    throw RunTimeError(kPathFileAccess, LogPath(form) + QStringLiteral(": the log cannot be written"));
}

} // namespace

void OpenLog(Form_Main& form, const QString& text) {
    if (!form.files.Write(LogPath(form), Stamp(form) + text.toUtf8() + "\r\n", false)) {
        LogFailed(form);
    }
}

void WriteLog(Form_Main& form, const QString& text) {
    if (!form.files.Append(LogPath(form), Stamp(form) + text.toUtf8() + "\r\n")) {
        LogFailed(form);
    }
}

LogBatch::LogBatch(Form_Main& form) : form_(form), stamp_(Stamp(form)) {}

LogBatch::~LogBatch() {
    if (!lines_.isEmpty()) {
        form_.files.Append(LogPath(form_), lines_);
    }
}

void LogBatch::Add(const QString& text) {
    lines_ += stamp_;
    lines_ += text.toUtf8();
    lines_ += "\r\n";
}

void LogBatch::Close() {
    const QByteArray lines = std::exchange(lines_, QByteArray());
    if (!lines.isEmpty() && !form_.files.Append(LogPath(form_), lines)) {
        LogFailed(form_);
    }
}
