// DataStore: the entries in memory, the file form of "data.json" and the
// export bundle, which is the same document. The file is always rewritten
// whole: write path + ".tmp", then move it over the real file.
#include "store/datastore.h"

#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>

#ifdef _WIN32
#include <windows.h>
#endif

namespace {

const std::string kPrefix = "fs_";

bool hasPrefix(const std::string& key) {
    return key.compare(0, kPrefix.size(), kPrefix) == 0;
}

std::filesystem::path fsPath(const std::string& utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

std::string utcNow() {
    const std::time_t now = std::time(nullptr);
    std::tm tm{};
#ifdef _WIN32
    gmtime_s(&tm, &now);
#else
    gmtime_r(&now, &tm);
#endif
    char buf[80];
    std::snprintf(buf, sizeof buf, "%04d-%02d-%02dT%02d:%02d:%02d.000Z", tm.tm_year + 1900, tm.tm_mon + 1,
                  tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec);
    return buf;
}

// atoi without its undefined overflow: blanks, a sign, then digits.
int leadingInt(const std::string& s, size_t from) {
    size_t i = from;
    while (i < s.size() && (s[i] == ' ' || (s[i] >= '\t' && s[i] <= '\r')))
        ++i;
    bool negative = false;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) negative = s[i++] == '-';
    long long v = 0;
    for (; i < s.size() && s[i] >= '0' && s[i] <= '9'; ++i)
        if (v < 1000000000) v = v * 10 + (s[i] - '0');
    return int(negative ? -v : v);
}

// "2026-03-05T…" ⇒ "5.3.2026"; anything shorter than a date as it stands.
std::string danishDate(const std::string& iso) {
    if (iso.size() < 10) return iso;
    return std::to_string(leadingInt(iso, 8)) + "." + std::to_string(leadingInt(iso, 5)) + "." +
           iso.substr(0, 4);
}

bool readFile(const std::string& utf8Path, std::string& out) {
    std::ifstream in(fsPath(utf8Path), std::ios::binary);
    if (!in) return false;
    std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (in.bad()) return false;
    out = std::move(text);
    return true;
}

bool replaceFile(const std::string& from, const std::string& to) {
#ifdef _WIN32
    return MoveFileExW(fsPath(from).c_str(), fsPath(to).c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
#else
    std::error_code ec;
    std::filesystem::rename(fsPath(from), fsPath(to), ec);
    return !ec;
#endif
}

} // namespace

DataStore& DataStore::instance() {
    // Never destroyed: the background job may still read it during exit.
    static DataStore* const store = new DataStore;
    return *store;
}

void DataStore::setPath(const std::string& utf8Path) {
    std::lock_guard lock(mutex_);
    path_ = utf8Path;
}

void DataStore::fillFrom(const Json& source) {
    entries_.clear();
    for (const auto& [key, value] : source.asObject())
        if (hasPrefix(key) && value.isString()) entries_[key] = value.str;
}

bool DataStore::load() {
    std::lock_guard lock(mutex_);
    if (path_.empty()) return false;
    std::string text;
    if (!readFile(path_, text)) return false;
    Json doc;
    if (!Json::tryParse(text, doc) || !doc.isObject()) return false;
    // Older versions kept the prefixed members at the top level.
    fillFrom(doc.has("data") ? doc.at("data") : doc);
    return true;
}

Json DataStore::get(const std::string& key, const Json& fallback) const {
    std::string text;
    {
        std::lock_guard lock(mutex_);
        auto it = entries_.find(kPrefix + key);
        if (it == entries_.end()) return fallback;
        text = it->second;
    }
    Json value;
    if (!Json::tryParse(text, value)) return fallback;
    return value;
}

std::string DataStore::getString(const std::string& key, const std::string& fallback) const {
    Json value = get(key);
    return value.isString() ? value.str : fallback;
}

void DataStore::set(const std::string& key, const Json& value) {
    std::lock_guard lock(mutex_);
    entries_[kPrefix + key] = Json::dump(value, 0);
    autoSave();
}

void DataStore::remove(const std::string& key) {
    std::lock_guard lock(mutex_);
    entries_.erase(kPrefix + key);
    autoSave();
}

std::vector<std::string> DataStore::keys() const {
    std::lock_guard lock(mutex_);
    std::vector<std::string> out;
    out.reserve(entries_.size());
    for (const auto& entry : entries_)
        out.push_back(entry.first.substr(kPrefix.size()));
    return out;
}

std::string DataStore::documentText() const {
    Json doc = Json::object();
    doc["app"] = "Keldvarn";
    Json& data = doc["data"] = Json::object();
    for (const auto& [key, text] : entries_)
        data.obj.emplace(key, Json(text));
    doc["saved"] = utcNow();
    doc["version"] = 1;
    return Json::dump(doc, 1);
}

bool DataStore::save() {
    std::lock_guard lock(mutex_);
    if (path_.empty()) return false;
    const std::string tmp = path_ + ".tmp";
    {
        std::ofstream out(fsPath(tmp), std::ios::binary | std::ios::trunc);
        if (!out) return false;
        const std::string text = documentText();
        out.write(text.data(), std::streamsize(text.size()));
        out.close();
        // A short write (full disk) must not replace a good file.
        if (!out) return false;
    }
    return replaceFile(tmp, path_);
}

void DataStore::autoSave() {
    if (autosave_ && !path_.empty()) save();
}

std::string DataStore::exportText() const {
    std::lock_guard lock(mutex_);
    return documentText();
}

bool DataStore::validateBundle(const std::string& text, std::string* dateOut, int* countOut) const {
    Json doc;
    if (!Json::tryParse(text, doc) || !doc.isObject()) return false;
    const std::string& app = doc.at("app").asString();
    if ((app != "Keldvarn" && app != "Ostrovalden") || !doc.at("data").isObject()) return false;
    if (countOut) {
        int count = 0;
        for (const auto& [key, value] : doc.at("data").obj)
            if (hasPrefix(key) && value.isString()) ++count;
        *countOut = count;
    }
    if (dateOut) *dateOut = danishDate(doc.at("saved").asString());
    return true;
}

bool DataStore::importBundle(const std::string& text, std::string* dateOut) {
    if (!validateBundle(text, dateOut, nullptr)) return false;
    Json doc = Json::parse(text);
    std::lock_guard lock(mutex_);
    fillFrom(doc.at("data"));
    autoSave();
    return true;
}

void DataStore::resetForTest() {
    std::lock_guard lock(mutex_);
    entries_.clear();
    path_.clear();
}

Json storeGet(const std::string& key, const Json& fallback) {
    return DataStore::instance().get(key, fallback);
}

std::string storeGetString(const std::string& key, const std::string& fallback) {
    return DataStore::instance().getString(key, fallback);
}

void storeSet(const std::string& key, const Json& value) {
    DataStore::instance().set(key, value);
}
