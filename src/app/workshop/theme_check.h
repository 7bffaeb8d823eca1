// Checking a whole theme.
#pragma once

#include "app/findings/finding.h"

#include <vector>

// Reads the theme in a folder as the jukebox does and returns everything that is wrong with it, the worst
// first. Any folder and any content of its files is allowed. Needs the toolkit, see Surroundings. Changes
// nothing. After a signal (see TerminationSignal) only what has been found so far is returned.
std::vector<Finding> CheckTheme(const QString& folder);
