// The console program: command line, toolkit, session.
#pragma once

// The whole program. The process's exit code: see RunConsole; 2 for a command line that is wrong.
int RunConsoleProgram(int argc, char** argv);
