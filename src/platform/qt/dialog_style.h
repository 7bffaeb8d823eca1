// The colours, sizes and style sheet of the dialogs.
#pragma once

#include <QColor>
#include <QString>

#include <array>

class QSize;

// The dark brown, cream and amber of the delivered themes.
struct DialogColors {
    static constexpr QRgb kGround = 0xFF14110E;   // the pages
    static constexpr QRgb kBar = 0xFF1C1713;      // the list of pages, the row of buttons
    static constexpr QRgb kField = 0xFF262019;    // fields, buttons, lists
    static constexpr QRgb kHover = 0xFF372D22;    // a button below the pointer
    static constexpr QRgb kChosen = 0xFF4A3A22;   // the chosen entry of a list
    static constexpr QRgb kLine = 0xFF3A3026;     // between rows
    static constexpr QRgb kEdge = 0xFF8A7555;     // around fields and buttons
    static constexpr QRgb kText = 0xFFFFF4DE;     // captions and values
    static constexpr QRgb kSoft = 0xFFD6BE98;     // explanations
    static constexpr QRgb kDisabled = 0xFF9F9079; // text of what cannot be used
    static constexpr QRgb kAmber = 0xFFFFBE54;    // the focus, a switch that is on, OK
    static constexpr QRgb kOnAmber = 0xFF221002;  // text on amber
    static constexpr QRgb kWarning = 0xFFFF0000;  // something is missing
};

// A colour of text and a ground that it is written on.
struct TextColors {
    QRgb text;
    QRgb ground;
};

// Every pair that the dialogs use.
inline constexpr std::array kDialogTexts = {
    TextColors{DialogColors::kText, DialogColors::kGround},
    TextColors{DialogColors::kText, DialogColors::kBar},
    TextColors{DialogColors::kText, DialogColors::kField},
    TextColors{DialogColors::kText, DialogColors::kHover},
    TextColors{DialogColors::kText, DialogColors::kChosen},
    TextColors{DialogColors::kSoft, DialogColors::kGround},
    TextColors{DialogColors::kSoft, DialogColors::kBar},
    TextColors{DialogColors::kAmber, DialogColors::kGround},
    TextColors{DialogColors::kAmber, DialogColors::kBar},
    TextColors{DialogColors::kAmber, DialogColors::kChosen},
    TextColors{DialogColors::kDisabled, DialogColors::kGround},
    TextColors{DialogColors::kDisabled, DialogColors::kField},
    TextColors{DialogColors::kOnAmber, DialogColors::kAmber},
    TextColors{DialogColors::kWarning, DialogColors::kGround},
};

// The least height and width of what a finger has to hit, in pixels.
inline constexpr int kFingerTarget = 44;

// The size of text in pixels, for a screen of that size.
int DialogTextSize(const QSize& screen);

QString DialogStyleSheet(int textSize);
