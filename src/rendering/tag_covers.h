// Covers from the tags of music files, and the surface that holds the last one.
#pragma once

#include "imaging/picture/surface.h"

#include <QString>

struct Form_Main;
struct PicturePorts;
struct SlotPlace;

// Returns the ports that loading a cover needs.
PicturePorts CoverPorts(Form_Main& form);

// Returns a slot's box for covers, without the zone's corner.
Box CoverBox(const Form_Main& form, const SlotPlace& place);

// Searches a file's tag for a cover: the first picture of type 0 or 3. Returns true when there is one, even
// if it cannot be decoded; it is decoded into Picture_TmpCover when that is first used. A broken tag stops
// the program (9, 6); a tag of fewer than 4 bytes raises 9.
bool FindTagCover(Form_Main& form, const QString& path);

// Does the same and draws the cover into a rectangle of both caches.
bool DrawTagCover(Form_Main& form, const Box& to, const QString& path);

// Draws the whole of Picture_TmpCover into a rectangle of a surface.
void DrawTmpCover(Form_Main& form, Surface& target, const Box& to);

// Decodes the cover of Picture_TmpCover unless that has been done.
void SettleTmpCover(Form_Main& form);
