// The time of one whole frame, and of a turning page, beside one copy of the screen.
#pragma once

#include <QString>

// Prints rows for a theme of the screen's size and for one that is scaled up. `homeFolder` is the delivered
// home.
void BenchFrames(const QString& homeFolder);

// The same for the turn of a page: what each leaf of it costs, without the 6 ms of waiting behind it.
void BenchTurns(const QString& homeFolder);

// What a pick costs the queue's rows and the frame, with a short and with a long queue.
void BenchQueue(const QString& homeFolder);
