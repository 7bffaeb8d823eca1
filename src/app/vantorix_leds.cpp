// The program vantorix-leds: the other end of the LED controller's wire.
#include "app/leds/run.h"

int main(int argc, char** argv) {
    return RunLeds(argc, argv);
}
