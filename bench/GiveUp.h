#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

namespace bench {

// Ends the program: a benchmark that cannot be run as meant has no result.
[[noreturn]] inline void giveUp(const std::string& why) {
    std::fprintf(stderr, "bench_wire: %s\n", why.c_str());
    std::exit(1);
}

} // namespace bench
