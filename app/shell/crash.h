// The crash record: a fatal signal or an uncaught exception on any thread
// writes "crash.txt" (first line with version, code and address, then up to
// 40 frames as module+offset) and the process still dies as it would have.
// The next start may send the record; that is not done here.
#pragma once

#include <string>

namespace app {

// First thing in main: nothing that runs before it is covered.
void installCrashHandler();

// Where the record goes; until it is set a crash writes nothing. The path is
// copied into a fixed buffer, so the handler needs no allocation.
void setCrashFilePath(const std::string& nativeUtf8Path);

} // namespace app
