// The data side of start-up: the per-user data directory, the one-off
// migration of an earlier installation's file, the store's first load and the
// reading of the stored display settings. main() calls these in order; the
// tests call them with XDG_DATA_HOME pointing at a temporary directory.
#pragma once

#include <QString>

namespace app {

// The application's writable data directory, created if missing. Empty when
// the system names none.
QString dataDirectory();

// Copies "data.json" from "../Ostrovalden" or else "../Keldvarn" beside the
// data directory, unless the directory already has one. A failed copy is let
// be: the start goes on with an empty store.
void migrateEarlierData(const QString& dataDir);

// Finds and migrates the data directory, points the crash record and the store
// into it, loads the store and counts the start ("usage_starts"), which is the
// run's first save. A damaged file has been moved aside by then, never
// overwritten. Returns the directory.
QString startData();

// The notice bar's words when this start moved a damaged "data.json" aside:
// that it couldn't be read, where the copy lies and that the program started
// afresh. Empty when the file was read, or there was none.
QString damagedDataNotice();

// Reads "komma", "rund", "trinvis", "tekst" and "theme" into the options and
// the theme, each with its fallback when missing or of another kind. Applies
// the theme, so it needs the QApplication.
void loadSettings();

} // namespace app
