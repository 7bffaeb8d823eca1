// The tasks of --check-theme: reporting mistakes, writing pictures, watching a theme.
#pragma once

#include "app/home/app_folder.h"
#include "app/start/command_line.h"

#include <optional>

// Carries out --check-theme. Returns the exit code: 0 nothing but notes, 1 warnings, 2 errors or nothing that
// can be checked, TerminationExitCode after a signal; no value when the command line does not ask for it. A
// signal leaves the pictures that are written and no temporary folder.
std::optional<int> RunThemeTask(const CommandLine& line, const AppFolderSources& sources, char** argv);
