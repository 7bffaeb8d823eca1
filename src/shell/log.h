// The text log: what the jukebox does, one line an action.
#pragma once

#include <QByteArray>
#include <QString>

struct Form_Main;

// Empties the log and writes its first line. Raises 75 when it cannot be written.
void OpenLog(Form_Main& form, const QString& text);

// Appends one line: local time as "yyyy-mm-dd hh:mm:ss", the text, CR LF. The file is opened and closed for
// each line, so that nothing is lost in a crash. Raises 75 when it cannot be written.
void WriteLog(Form_Main& form, const QString& text);

// Log lines that are written in one go, for a routine that writes very many. What has been added is written
// when the object goes, also when an error ends the routine.
class LogBatch {
public:
    explicit LogBatch(Form_Main& form);
    ~LogBatch();
    LogBatch(const LogBatch&) = delete;
    LogBatch& operator=(const LogBatch&) = delete;

    void Add(const QString& text);
    // Writes what has been added. Raises 75 when it cannot be written.
    void Close();

private:
    Form_Main& form_;
    QByteArray stamp_;
    QByteArray lines_;
};
