// Checking the rectangles of a theme: inside their area, and apart from one another.
#pragma once

#include "app/workshop/checked_theme.h"

#include <QStringList>

void CheckPlaces(CheckedTheme& theme);

// Places of the theme that other checks need too.
QStringList TransportButtons(); // the keys' prefixes, like "BlockMainBtnStop"
QStringList QueueButtons();
QStringList MainTexts();
QStringList NavigationButtons();
