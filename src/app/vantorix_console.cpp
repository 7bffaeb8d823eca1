// The program vantorix-console.
#include "app/console/run.h"

int main(int argc, char** argv) {
    return RunConsoleProgram(argc, argv);
}
