// The crash record: a fatal signal or an uncaught exception on any thread
// writes "crash.txt" (first line with version, code and address, then up to
// 40 raw frame addresses and the process's memory map) and the process still
// dies as it would have. The next start names the frames (module, symbol,
// offset, and file and line where debug information is found) before the
// record is sent or read; sending is the background job's.
#pragma once

#include <string>

namespace app {

// First thing in main: nothing that runs before it is covered.
void installCrashHandler();

// Where the record goes; until it is set a crash writes nothing. The path is
// copied into a fixed buffer, so the handler needs no allocation.
void setCrashFilePath(const std::string& nativeUtf8Path);

// A raw record as the handler wrote it, with its frames named:
//   "  #3 libQt6Core.so.6!QObject::event(QEvent*)+0x1c  (qobject.cpp:1234)"
//   "  #3 libQt6Core.so.6!QObject::event(QEvent*)+0x1c"   without debug lines
//   "  #3 libQt6Core.so.6+0x2a4f0"                        without a symbol
// The memory map is dropped. A text that isn't a raw record comes back as it is.
std::string symboliseCrashRecord(const std::string& raw);

// Rewrites the file at `path` in its named form, through a temporary and a
// rename. False when there was nothing to do or it could not be written.
bool symboliseCrashFile(const std::string& path);

} // namespace app
