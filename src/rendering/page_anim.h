// The page turn.
#pragma once

#include <QString>

struct Form_Main;

// Paints the page CurrentPage and turns to it: forwards for "+", backwards for anything else. Records the
// page in the history of its depth. A forward turn never ends when the theme's left page is much wider than
// its right one.
void PageAnim(Form_Main& form, const QString& Direction);
