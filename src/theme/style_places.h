// Where a text style of the theme comes from, for the detail of an error.
#pragma once

#include <QString>

struct Form_Main;

// The file, section and key of the theme's colours that have this text and stand beside this font, for
// instance
// ".../theme.ini, [BlockMain] BlockMainRemainFontColor". Joined by " or " when there are several, the file
// alone when there is none.
QString PlacesOfColour(Form_Main& form, const QString& font, const QString& colour);
