#include <iostream>
#include <sys/prctl.h>
#include <unistd.h>

#include "cli/Arrayctl.h"

int main(int argc, char** argv) {
    prctl(PR_SET_DUMPABLE, 0); // what it holds of secrets gets into no core file
    std::ios::sync_with_stdio(false);
    cli::Context context(std::cin, std::cout, std::cerr);
    context.inIsTerminal = isatty(STDIN_FILENO) == 1;
    context.errIsTerminal = isatty(STDERR_FILENO) == 1;
    return cli::arrayctl(argc, argv, context);
}
