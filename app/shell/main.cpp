#include "app/shell/OrvikTallyviewApp.h"

int main(int argc, char **argv) { return tallyview::runTallyview(argc, argv); }
