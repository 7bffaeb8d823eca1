// The console program: command line, toolkit, session.
#pragma once

// Runs the whole program and returns its exit code: see RunConsole; 2 for a wrong command line.
int RunConsoleProgram(int argc, char** argv);
