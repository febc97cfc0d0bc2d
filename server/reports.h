// The administrator's view of what the students' programs sent by
// themselves and what students wrote by hand: bug reports newest first,
// crash records grouped by the frames at the top of their stack, and how
// often each page was opened. Plain data in, HTML out.
#pragma once

#include "server/storage.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace server {

struct BugEntry {
    double at = 0;
    int64_t classId = 0;
    std::string text, contact, version, edition, page, os;
};

struct CrashGroup {
    std::string signature; // the exception line's code and the top frames, one per line
    int count = 0;
    double first = 0, last = 0;
    std::set<std::string> versions;
    std::set<std::string> copies; // uids
    std::string example;          // the newest record of the group, whole
};

struct PageUse {
    std::string page;
    double visits = 0;
};

struct ReportsSummary {
    std::vector<BugEntry> bugs;        // newest first
    std::vector<CrashGroup> crashes;   // most frequent first
    std::vector<PageUse> pages;        // most visited first
    double starts = 0;
    size_t usageReports = 0;
    size_t copies = 0;                 // distinct uids among the usage reports
};

// "exception 0x0000000b" and the first `frames` frames that aren't the C or
// C++ runtime's (abort, raise, the throw machinery), without offsets where a
// symbol names the spot, and without file and line, so that two builds of
// the same fault meet. "" for a text that isn't a crash record.
std::string crashSignature(const std::string& record, int frames = 3);

// `reports` newest first, as the storage lists them.
ReportsSummary summariseReports(const std::vector<Report>& reports);

struct ReportsView {
    std::string csrf;
    std::string teacherName;
    ReportsSummary summary;
    int days = 0; // the span the reports were taken from
};
std::string reportsPage(const ReportsView& v);

} // namespace server
