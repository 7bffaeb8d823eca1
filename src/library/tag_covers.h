// Covers from the tags of music files, and the surface that holds the last one.
#pragma once

#include "imaging/surface.h"

#include <QString>

struct Form_Main;
struct PicturePorts;
struct SlotPlace;

// What loading a cover needs.
PicturePorts CoverPorts(Form_Main& form);

// A slot's box for covers, without the zone's corner.
Box CoverBox(const Form_Main& form, const SlotPlace& place);

// Looks for a cover in a file's tag: the first picture of type 0 or 3. True when there is one, decodable or
// not; Picture_TmpCover then holds it as soon as someone looks. A broken tag stops the program (9, 6); a tag
// of fewer than 4 bytes raises 9.
bool FindTagCover(Form_Main& form, const QString& path);

// The same, and draws what was found into a rectangle of both caches.
bool DrawTagCover(Form_Main& form, const Box& to, const QString& path);

// Draws the whole of Picture_TmpCover into a rectangle of a surface.
void DrawTmpCover(Form_Main& form, Surface& target, const Box& to);

// Decodes what Picture_TmpCover is to hold, if that has not been done.
void SettleTmpCover(Form_Main& form);
