#include "net/job.h"

#include "net/api.h"
#include "net/tasks.h"
#include "store/datastore.h"

#include <chrono>

namespace net {

namespace {

constexpr double kStatsEverySeconds = 72000; // 20 hours

double systemNow() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count() / 1000.0;
}

Profile readProfile(const Json& from) {
    Profile p;
    for (const Json& id : from.at("off").asArray())
        if (id.isString()) p.off.insert(id.str);
    p.profile = from.at("profile").asString();
    return p;
}

void keepProfile(const Json& check) {
    Json record = Json::object();
    Json off = Json::array();
    for (const Json& id : check.at("off").asArray())
        if (id.isString()) off.push(id);
    record["off"] = std::move(off);
    record["profile"] = Json(check.at("profile").asString());
    storeSet(key::ClassProfile, record);
}

} // namespace

Profile lastProfile() { return readProfile(storeGet(key::ClassProfile)); }

void sendClassStats(bool enabled, const std::string& summary, const Poster& poster, double now) {
    storeSet(key::ClassStats, Json(enabled));
    if (!enabled) return;
    const std::string uid = ensureClassUid();
    if (now - storeGet(key::ClassStatsLast).asNumber(0) < kStatsEverySeconds) return;
    Json request;
    if (!Json::tryParse(summary, request) || request.at("topics").asObject().empty()) return;
    request["uid"] = Json(uid);
    request["version"] = Json(kVersion);
    request["key"] = Json(classKey());
    if (call(poster, path::ClassStats, request).outcome == 1) storeSet(key::ClassStatsLast, Json(now));
}

ServiceResult serviceJob(const JobInput& in) {
    ServiceResult result;
    result.force = in.force;
    const double now = in.now ? in.now() : systemNow();

    const std::string code = classKey();
    Json check;
    if (code.empty()) {
        result.noLogin = true;
    } else {
        Json request = Json::object();
        request["key"] = Json(code);
        request["version"] = Json(kVersion);
        Reply reply = call(in.poster, path::Check, request);
        result.outcome = reply.outcome;
        result.text = reply.text;
        check = std::move(reply.body);
    }

    if (result.outcome == 1) {
        result.message = check.at("message").asString();
        result.messageId = check.at("messageId").asString();
        result.classMsg = check.at("classMsg").asString();
        result.classMsgId = check.at("classMsgId").asString();
        keepProfile(check);
        if (!in.force && in.classSummary)
            sendClassStats(check.at("classStats").asBool(), in.classSummary(), in.poster, now);
        result.newTasks = fetchNewTasks(check.at("tasksUpdated").asNumber(0), in.poster);
    }
    const Profile profile = lastProfile();
    result.off = profile.off;
    result.profile = profile.profile;

    // A check-in that reached nobody: "/version" would wait out the same
    // time-outs again, so the job ends after one round of them.
    const bool unreachable = !code.empty() && result.outcome == 0;
    if (result.outcome != -1 && !unreachable) {
        const Reply version = call(in.poster, path::Version, Json::object());
        const std::string& v = version.body.at("version").asString();
        if (version.outcome == 1 && !v.empty() && v != kVersion) {
            result.newVersion = v;
            result.versionUrl = version.body.at("url").asString();
        }
        if (!in.force && in.sendReports) in.sendReports(in.dataDir, in.poster);
    }
    return result;
}

} // namespace net
