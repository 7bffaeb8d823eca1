// The doctor: checking music, settings, theme and machine before a patron finds what is wrong.
#pragma once

struct AppFolderSources;
struct CommandLine;

// Carries out --check and returns the exit code of the process. Needs no display and changes nothing on the
// disk. A signal ends it with what has been found so far; the code is 128 + the signal's number then.
int RunDoctor(const CommandLine& line, const AppFolderSources& sources);
