// The surroundings of a session: the toolkit without a display, the same on every machine.
#pragma once

#include <memory>

// No display, 96 dots per inch, no scaling, no language. One at a time; everything that draws or uses fonts
// stays inside its life. Kept apart from the jukebox's own headers: the toolkit's and the port's displays
// bear the same name.
class Surroundings {
public:
    Surroundings();
    ~Surroundings();
    Surroundings(const Surroundings&) = delete;
    Surroundings& operator=(const Surroundings&) = delete;

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};
