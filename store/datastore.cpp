// DataStore: the entries in memory, the file form of "data.json" and the
// export bundle, which is the same document. The file is always rewritten
// whole: write path + ".tmp", flush it, move it over the real file, flush the
// folder. A damaged file is renamed aside at load, never written over.
#include "store/datastore.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>

#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <fcntl.h>
#include <unistd.h>
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

enum class ReadResult {
    Ok,
    Missing,  // nothing at the path: a first start
    NotAFile, // a folder or the like: not ours to move
    Failed,   // a file that exists but can't be opened or read
};

ReadResult readFile(const std::string& utf8Path, std::string& out) {
    std::error_code ec;
    const auto status = std::filesystem::status(fsPath(utf8Path), ec);
    if (status.type() == std::filesystem::file_type::not_found) return ReadResult::Missing;
    if (ec || status.type() != std::filesystem::file_type::regular) return ReadResult::NotAFile;
    // libstdc++ throws from inside the stream buffer on a read error (EIO,
    // EISDIR), whatever the exception mask says.
    try {
        std::ifstream in(fsPath(utf8Path), std::ios::binary);
        if (!in) return ReadResult::Failed;
        std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        if (in.bad()) return ReadResult::Failed;
        out = std::move(text);
        return ReadResult::Ok;
    } catch (...) {
        return ReadResult::Failed;
    }
}

// "data.json" ⇒ "data-beskadiget-2026-03-05-101112.json" beside it, in local
// time because the student looks for it; "-2", "-3" … when that name is taken.
std::filesystem::path damagedName(const std::filesystem::path& file, int attempt) {
    const std::time_t now = std::time(nullptr);
    std::tm tm{};
#ifdef _WIN32
    localtime_s(&tm, &now);
#else
    localtime_r(&now, &tm);
#endif
    char stamp[80];
    std::snprintf(stamp, sizeof stamp, "-beskadiget-%04d-%02d-%02d-%02d%02d%02d", tm.tm_year + 1900,
                  tm.tm_mon + 1, tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec);
    std::u8string name = file.stem().u8string();
    const std::string suffix = stamp + (attempt > 1 ? "-" + std::to_string(attempt) : std::string());
    name += std::u8string(suffix.begin(), suffix.end());
    name += file.extension().u8string();
    return file.parent_path() / name;
}

// Renames the file to a fresh dated name; the UTF-8 path of the copy, or
// empty when it can't be moved (a read-only folder: then no save can
// overwrite it either).
std::string setAside(const std::string& utf8Path) {
    const std::filesystem::path file = fsPath(utf8Path);
    for (int attempt = 1; attempt <= 100; ++attempt) {
        const std::filesystem::path copy = damagedName(file, attempt);
        std::error_code ec;
        if (std::filesystem::exists(copy, ec) || ec) continue; // never replace an earlier copy
        std::filesystem::rename(file, copy, ec);
        if (ec) return {};
        const std::u8string u8 = copy.u8string();
        return std::string(u8.begin(), u8.end());
    }
    return {};
}

#ifdef _WIN32
// Writes and commits the whole text; on any failure the temporary is removed.
bool writeDurably(const std::filesystem::path& tmp, const std::string& text) {
    const int fd = _wopen(tmp.c_str(), _O_WRONLY | _O_CREAT | _O_TRUNC | _O_BINARY, _S_IREAD | _S_IWRITE);
    if (fd < 0) return false;
    bool ok = true;
    for (size_t done = 0; ok && done < text.size();) {
        const int n = _write(fd, text.data() + done, unsigned(std::min<size_t>(text.size() - done, 1 << 20)));
        ok = n > 0;
        if (ok) done += size_t(n);
    }
    ok = ok && _commit(fd) == 0;
    ok = _close(fd) == 0 && ok;
    if (!ok) _wunlink(tmp.c_str());
    return ok;
}

bool replaceFile(const std::filesystem::path& from, const std::filesystem::path& to) {
    return MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

bool syncFolder(const std::filesystem::path&) {
    return true; // MOVEFILE_WRITE_THROUGH has waited for the move
}
#else
// Writes and fsyncs the whole text; on any failure the temporary is removed.
// Without the fsync a power cut after the rename can leave an empty file.
bool writeDurably(const std::filesystem::path& tmp, const std::string& text) {
    const int fd = ::open(tmp.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0) return false; // also a folder named like the temporary: not ours to remove
    bool ok = true;
    for (size_t done = 0; ok && done < text.size();) {
        const ssize_t n = ::write(fd, text.data() + done, text.size() - done);
        if (n < 0 && errno == EINTR) continue;
        ok = n > 0;
        if (ok) done += size_t(n);
    }
    ok = ok && ::fsync(fd) == 0;
    ok = ::close(fd) == 0 && ok;
    if (!ok) ::unlink(tmp.c_str());
    return ok;
}

bool replaceFile(const std::filesystem::path& from, const std::filesystem::path& to) {
    std::error_code ec;
    std::filesystem::rename(from, to, ec);
    return !ec;
}

// The rename lives in the folder's entries; they reach the disk with the folder.
bool syncFolder(const std::filesystem::path& folder) {
    const int fd = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return false;
    // Some file systems can't sync a folder (EINVAL); the data are as safe as they allow.
    const bool ok = ::fsync(fd) == 0 || errno == EINVAL;
    ::close(fd);
    return ok;
}
#endif

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
    damagedCopy_.clear();
    std::string text;
    const ReadResult read = readFile(path_, text);
    if (read == ReadResult::Missing || read == ReadResult::NotAFile) return false;
    Json doc;
    if (read == ReadResult::Failed || !Json::tryParse(text, doc) || !doc.isObject()) {
        // An empty file (a cut power before saves were flushed) holds nothing to keep.
        if (read == ReadResult::Failed || !text.empty()) damagedCopy_ = setAside(path_);
        return false;
    }
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
    const std::filesystem::path file = fsPath(path_);
    const std::filesystem::path tmp = fsPath(path_ + ".tmp");
    // A short write (full disk) must not replace a good file.
    bool ok = writeDurably(tmp, documentText());
    if (ok && !replaceFile(tmp, file)) {
        std::error_code ec;
        std::filesystem::remove(tmp, ec);
        ok = false;
    }
    ok = ok && syncFolder(file.parent_path());
    saveFailing_ = !ok;
    return ok;
}

bool DataStore::saveFailing() const {
    std::lock_guard lock(mutex_);
    return saveFailing_;
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
    damagedCopy_.clear();
    saveFailing_ = false;
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
