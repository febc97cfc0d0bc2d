// The background job's sequence as one plain function: check-in, class
// statistics, tasks, version, reports. It blocks on the network and touches
// only the class service's own store keys; the interface runs it on a thread
// of its own and applies the result on its thread.
#pragma once

#include "net/http.h"
#include "net/locks.h"

#include <functional>
#include <string>
#include <vector>

namespace net {

struct ServiceResult {
    int outcome = 0;          // of "/check": 1 answered, 0 no answer, −1 the class code was refused
    std::string text;         // the message that goes with the outcome
    bool noLogin = false;     // no class code: nothing was asked, and nothing is to be told
    std::string message, messageId;
    std::string classMsg, classMsgId;
    std::vector<std::string> newTasks; // titles
    std::string newVersion, versionUrl;
    // The teacher's profile in force: the check-in's, or the last known one
    // when the check-in failed.
    OffSet off;
    std::string profile;
    bool force = false;       // the job came from "↻  Opdatér"
};

struct JobInput {
    std::string dataDir;
    bool force = false;
    Poster poster = post;
    // The practice statistics' summary as JSON text; unset sends none.
    std::function<std::string()> classSummary;
    // The usage and crash reports, last and only without `force`; unset
    // sends none.
    std::function<void(const std::string& dataDir, const Poster& poster)> sendReports;
    // Seconds since the epoch.
    std::function<double()> now;
};

ServiceResult serviceJob(const JobInput& in);

// Stores the teacher's wish; with it, uploads the summary at most once in 20
// hours, when it holds at least one topic.
void sendClassStats(bool enabled, const std::string& summary, const Poster& poster, double now);

// The profile kept from the last answered check-in.
struct Profile {
    OffSet off;
    std::string profile;
};
Profile lastProfile();

} // namespace net
