// The program vantorix: the jukebox of the cabinet.
#include "app/cabinet/cabinet.h"

int main(int argc, char** argv) {
    return RunCabinet(argc, argv);
}
