// The single key-value store behind "data.json". Every key is kept with the
// prefix "fs_", every value as compact JSON text; each set/remove rewrites the
// whole file through a ".tmp" file flushed to the disk and an atomic rename,
// so a crash or power cut mid-save leaves the old file whole. Reads never
// fail: a missing or unreadable value gives the caller's fallback. A file that
// can't be read is moved aside, never overwritten: it holds a student's work.
#pragma once

#include "store/json.h"

#include <map>
#include <mutex>
#include <string>
#include <vector>

class DataStore {
  public:
    static DataStore& instance();

    void setPath(const std::string& utf8Path);
    const std::string& path() const { return path_; }

    // Reads the file, nested ("data" member) or the older flat form. Any
    // failure (no path, no file, a read error, bad JSON, top level not an
    // object) returns false and leaves the entries as they were. A file that
    // exists but can't be read or parsed is first renamed to a dated copy
    // beside it (see damagedCopy), so the next save can't destroy it.
    bool load();
    // The UTF-8 path of the copy the last load set aside; empty when it made none.
    const std::string& damagedCopy() const { return damagedCopy_; }
    Json get(const std::string& key, const Json& fallback = Json()) const;
    // The stored value if it is a string, else the fallback.
    std::string getString(const std::string& key, const std::string& fallback = std::string()) const;
    void set(const std::string& key, const Json& value);
    void remove(const std::string& key);
    // Without prefix, in byte order.
    std::vector<std::string> keys() const;
    // Writes the file now and flushes it and its folder to the disk; false
    // when there is no path or the file could not be written, flushed or moved
    // into place (the old file then stays as it was, and no ".tmp" is left).
    bool save();
    // True while the latest save with a path failed: the entries live in
    // memory only until a later save gets through.
    bool saveFailing() const;

    // The file's text with a fresh "saved", for an export file.
    std::string exportText() const;
    // A document from this program (or its earlier name) with an object
    // "data": the number of usable entries and "saved" as a Danish date.
    bool validateBundle(const std::string& text, std::string* dateOut, int* countOut) const;
    // Replaces every entry by those of a valid bundle, then saves.
    bool importBundle(const std::string& text, std::string* dateOut);

    // For tests: drop all entries and the path without touching any file.
    void resetForTest();

  private:
    DataStore() = default;
    void autoSave();
    std::string documentText() const;
    void fillFrom(const Json& source);

    std::string path_;
    std::map<std::string, std::string> entries_;
    bool autosave_ = true;
    std::string damagedCopy_;
    bool saveFailing_ = false;
    // Guards the map and the file against the one background job that
    // touches a few keys of its own.
    mutable std::recursive_mutex mutex_;
};

// Shorthands for the singleton.
Json storeGet(const std::string& key, const Json& fallback = Json());
std::string storeGetString(const std::string& key, const std::string& fallback = std::string());
void storeSet(const std::string& key, const Json& value);
