// The strip in a terminal, in 24-bit colours.
#pragma once

#include "app/leds/strip.h"

#include <string>
#include <vector>

// The picture: the introduction, the status, and the lamps in rows of the terminal's width. Lines that do not
// fit are left out.
std::string TerminalPicture(const std::string& introduction, const std::string& status,
                            const std::vector<Colour>& lamps, int columns, int rows);

// Holds the terminal's second screen, without a cursor, as long as it exists. The terminal gets its own
// screen and its cursor back in the destructor, when the process is stopped, and when it crashes.
class TerminalScreen {
public:
    TerminalScreen();
    ~TerminalScreen();
    TerminalScreen(const TerminalScreen&) = delete;
    TerminalScreen& operator=(const TerminalScreen&) = delete;

    // Draws, unless the terminal accepts nothing at present. Returns false when it has gone.
    static bool Draw(const std::string& introduction, const std::string& status,
                     const std::vector<Colour>& lamps);

    // Whether standard output is a terminal that can do this.
    static bool IsPossible();

private:
    static void Enter();
    static void Leave();
    static void OnCrash(int number);
    static void OnStop(int number);
};
