// The keys of the theme that define a text style, for the detail of an error.
#pragma once

#include <QString>

struct Form_Main;

// Returns the file and, by section and key, the theme's colours that have this value and belong to this font,
// for instance ".../theme.ini, [BlockMain] BlockMainRemainFontColor". Several keys are joined by " or ";
// without a match, only the file is returned.
QString PlacesOfColour(Form_Main& form, const QString& font, const QString& colour);
