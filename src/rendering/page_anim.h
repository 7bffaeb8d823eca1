// The page that turns like a leaf.
#pragma once

#include <QString>

struct Form_Main;

// Paints the page that the caller has chosen and turns to it: forwards for "+", backwards for anything else.
// Records the page in the history of its depth. A theme whose pages differ much in width keeps the second
// half going for ever.
void PageAnim(Form_Main& form, const QString& Direction);
