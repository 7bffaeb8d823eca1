// The doctor: checking music, settings, theme and machine before a patron finds what is wrong.
#pragma once

struct AppFolderSources;
struct CommandLine;

// Carries out --check and returns the exit code of the process. Needs no display and changes nothing on the
// disk.
int RunDoctor(const CommandLine& line, const AppFolderSources& sources);
