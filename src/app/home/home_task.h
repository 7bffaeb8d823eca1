// The tasks that need no display: setting the music folder, writing and restoring a backup.
#pragma once

#include "app/home/app_folder.h"
#include "app/start/command_line.h"

// Carries out --setup, --backup or --restore, and reports on standard output and standard error. Returns the
// exit code: 0 done, 1 failed, 2 wrong command line, TerminationExitCode when a signal has ended it and
// nothing is changed; no value when the command line asks for none of them.
//
// When the superuser sets or restores what belongs to another user, this happens with that user's rights: the
// files keep their owner, the music folder is checked as the jukebox will see it, and links that the user has
// made cannot lead to the superuser's files.
std::optional<int> RunHomeTask(const CommandLine& line, const AppFolderSources& sources);
