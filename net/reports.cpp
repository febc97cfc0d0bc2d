#include "net/reports.h"

#include "net/api.h"
#include "store/datastore.h"
#include "store/keys.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace net {

namespace {

constexpr double kUsageEverySeconds = 72000; // 20 hours

std::filesystem::path crashFile(const std::string& dataDir) {
    const std::string utf8 = dataDir + "/crash.txt";
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

bool readWhole(const std::filesystem::path& file, std::string& out) {
    std::ifstream in(file, std::ios::binary);
    if (!in) return false;
    std::ostringstream text;
    text << in.rdbuf();
    if (in.bad()) return false;
    out = text.str();
    return true;
}

std::string ensureTelemetryUid() {
    std::string uid = storeGetString(key::TelemetryUid);
    if (uid.empty()) {
        uid = makeUid(0); // seeded from the time alone, unlike the class's uid
        storeSet(key::TelemetryUid, Json(uid));
    }
    return uid;
}

} // namespace

void sendReports(const std::string& dataDir, const Poster& poster, double now) {
    const std::filesystem::path crash = crashFile(dataDir);
    std::error_code ec;
    if (!storeGet(key::Telemetry).asBool(false)) {
        std::filesystem::remove(crash, ec);
        return;
    }
    const std::string uid = ensureTelemetryUid();

    const Json usage = storeGet(key::Usage);
    const double starts = storeGet(key::UsageStarts).asNumber(0);
    const double last = storeGet(key::TelemetryLast).asNumber(0);
    const bool counted = (usage.isObject() && !usage.obj.empty()) || starts >= 1;
    if (counted && now - last > kUsageEverySeconds) {
        storeSet(key::TelemetryLast, Json(now));
        Json request = Json::object();
        request["kind"] = Json("usage");
        request["uid"] = Json(uid);
        request["version"] = Json(kVersion);
        request["pages"] = usage.isObject() ? usage : Json::object();
        request["starts"] = Json(starts);
        if (call(poster, path::Telemetry, request).outcome == 1) {
            // What was sent is taken off; visits the interface counted while
            // the request was under way stay for the next report.
            Json left = Json::object();
            const Json current = storeGet(key::Usage);
            for (const auto& [page, count] : current.asObject()) {
                const double rest = count.asNumber(0) - request.at("pages").at(page).asNumber(0);
                if (rest > 0) left[page] = Json(rest);
            }
            storeSet(key::Usage, left);
            storeSet(key::UsageStarts, Json(std::max(0.0, storeGet(key::UsageStarts).asNumber(0) - starts)));
        }
    }

    std::string text;
    if (!readWhole(crash, text)) return;
    Json request = Json::object();
    request["kind"] = Json("crash");
    request["uid"] = Json(uid);
    request["version"] = Json(kVersion);
    request["text"] = Json(text);
    if (call(poster, path::Telemetry, request).outcome == 1) std::filesystem::remove(crash, ec);
}

} // namespace net
