// The text log: what the jukebox does, one line per action.
#pragma once

#include <QByteArray>
#include <QString>

struct Form_Main;

// Empties the log and writes its first line. Raises 75 when it cannot be written.
void OpenLog(Form_Main& form, const QString& text);

// Appends one line: local time as "yyyy-mm-dd hh:mm:ss", the text, CR LF. The file is opened and closed for
// each line, so that nothing is lost in a crash. Raises 75 when it cannot be written.
void WriteLog(Form_Main& form, const QString& text);

// Collects log lines and writes them at once, for routines that write very many. The destructor writes what
// Close has not written, so that an error in the routine loses no lines; it ignores a failure.
class LogBatch {
public:
    explicit LogBatch(Form_Main& form);
    ~LogBatch();
    LogBatch(const LogBatch&) = delete;
    LogBatch& operator=(const LogBatch&) = delete;

    void Add(const QString& text);
    // Writes the collected lines. Raises 75 when they cannot be written.
    void Close();

private:
    Form_Main& form_;
    QByteArray stamp_;
    QByteArray lines_;
};
