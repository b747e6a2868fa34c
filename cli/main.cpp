#include <iostream>
#include <unistd.h>

#include "cli/Arrayctl.h"
#include "commandline/CoreFiles.h"

int main(int argc, char** argv) {
    commandline::leaveNoCoreFiles();
    std::ios::sync_with_stdio(false);
    cli::Context context(std::cin, std::cout, std::cerr);
    context.inIsTerminal = isatty(STDIN_FILENO) == 1;
    context.errIsTerminal = isatty(STDERR_FILENO) == 1;
    return cli::arrayctl(argc, argv, context);
}
