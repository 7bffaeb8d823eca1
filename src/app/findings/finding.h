// What a check finds: a fault, its place, its effect and what to do about it.
#pragma once

#include <QString>

// Error: the jukebox stops, or cannot do what it is for. Warning: something is missing, or wrong for patrons.
// Note: worth knowing.
enum class Level { kNote, kWarning, kError };

enum class Subject { kMusic, kTheme, kSettings, kMachine };

struct Finding {
    Level level = Level::kNote;
    Subject subject = Subject::kMachine;
    // The file, folder or device; empty when it is about none.
    QString path;
    // What happens and why, in whole sentences.
    QString text;
    // What to do; empty when nothing needs to be done.
    QString advice;
    // The name of the kind of finding. A report for a person shows findings of one kind together. Empty:
    // those with the same text are of one kind.
    QString kind = {};
};
