#include "app/terminal/TerminalProgram.h"

int main(int argc, char **argv) { return tallyview::runTerminal(argc, argv); }
