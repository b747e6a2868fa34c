#pragma once

namespace commandline {

// From now on this process, which may hold secrets, leaves no core file when it crashes, and only
// root may attach to it or read its memory.
void leaveNoCoreFiles();

} // namespace commandline
