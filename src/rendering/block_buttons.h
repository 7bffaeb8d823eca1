// The buttons of the Main block and of the queue.
#pragma once

struct Form_Main;

// Paints the five buttons of a block, each cut from one of four full pictures of the block by focus and
// availability.
void DrawMainButtons(Form_Main& form);
void DrawPlaylistButtons(Form_Main& form);
