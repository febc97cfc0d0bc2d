// The single key-value store behind "data.json". Every key is kept with the
// prefix "fs_", every value as compact JSON text; each set/remove rewrites the
// whole file through a ".tmp" file and an atomic rename.
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

    bool load();
    Json get(const std::string& key, const Json& fallback = Json()) const;
    std::string getString(const std::string& key, const std::string& fallback = std::string()) const;
    void set(const std::string& key, const Json& value);
    void remove(const std::string& key);
    std::vector<std::string> keys() const;
    bool save();

    std::string exportText() const;
    bool validateBundle(const std::string& text, std::string* dateOut, int* countOut) const;
    bool importBundle(const std::string& text, std::string* dateOut);

    // For tests: drop all entries and the path without touching any file.
    void resetForTest();

private:
    DataStore() = default;
    void autoSave();
    std::string documentText() const;

    std::string path_;
    std::map<std::string, std::string> entries_;
    bool autosave_ = true;
    mutable std::recursive_mutex mutex_;
};

// Shorthands for the singleton.
Json storeGet(const std::string& key, const Json& fallback = Json());
std::string storeGetString(const std::string& key, const std::string& fallback = std::string());
void storeSet(const std::string& key, const Json& value);
