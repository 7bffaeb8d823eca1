// The toolkit without a display, set up the same way on every machine.
#pragma once

#include <memory>

// No display, 96 dots per inch, no scaling, no language. Only one at a time; everything that draws or uses
// fonts must run during its life. Separate from the jukebox's headers because the toolkit and the display
// port both declare the name Display.
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
