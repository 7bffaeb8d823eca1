// Starting the program again in the same process, and what the next start has to know.
#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <vector>

// What one start tells the next one. It travels in the environment, so it ends with the process.
struct RestartNote {
    // Why the program was started again, for the log; empty at a first start.
    QString reason;
    // The times of the last stops by an error, in seconds since the system's start, oldest first.
    std::vector<std::int64_t> stops;
    // The log could not be written: lines may be lost from now on.
    bool mayLoseLines = false;
};

// Converts a note to text without line breaks, and back. Any text can be read; what makes no sense is left
// out.
QByteArray BytesOf(const RestartNote& note);
RestartNote NoteOf(const QByteArray& bytes);

// Takes the note of the start before out of the environment.
RestartNote TakeRestartNote();

// Seconds since the system's start, including the time that it slept.
std::int64_t SecondsSinceBoot();

// Adds a stop that happens now, and returns true when it is the third one within five minutes.
bool StopsTooOften(RestartNote& note, std::int64_t now);

// Replaces this process by a new run of the same program with the same arguments. Call it when everything has
// been closed. Returns only when the system refuses.
void StartAgain(const RestartNote& note, char** argv);
