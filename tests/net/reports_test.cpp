// The anonymous reports: consent, the 20-hour rule and the crash record's
// fate, against a fake network and a store in a temporary folder.
#include "net/reports.h"

#include "store/datastore.h"
#include "store/keys.h"
#include "tests/store/temp_store.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <optional>

namespace {

constexpr double kHour = 3600;
constexpr double kNow = 1.8e9;
const char* const kRecord = "Ostrovalden 1.0.30 crash: exception 0x0000000b at 0x10\n"
                            "  #0 ostrovalden!app::KredsPage::solve()+0x1c  (kredspage.cpp:88)\n";

struct Sent {
    std::string path;
    Json body;
};

class Reports : public TempStoreTest {
  protected:
    void writeCrash(const std::string& text) { std::ofstream(dir_ / "crash.txt", std::ios::binary) << text; }
    bool crashThere() const { return std::filesystem::exists(dir_ / "crash.txt"); }

    // Answers every call with `reply`, or fails them all when it is empty.
    net::Poster poster(std::optional<std::string> reply) {
        return [this, reply](const std::string& path, const std::string& body, std::string& out,
                             std::string& err) {
            sent.push_back({path, Json::parse(body)});
            if (!reply) {
                err = "Ingen forbindelse til serveren.";
                return false;
            }
            out = *reply;
            return true;
        };
    }
    const Sent* sentKind(const std::string& kind) const {
        for (const Sent& s : sent)
            if (s.body.at("kind").asString() == kind) return &s;
        return nullptr;
    }

    std::vector<Sent> sent;
};

TEST_F(Reports, withoutConsentNothingGoesOutAndTheCrashRecordIsDeleted) {
    for (const Json& consent : {Json(), Json(false), Json("true")}) {
        SCOPED_TRACE(Json::dump(consent, 0));
        sent.clear();
        if (!consent.isNull()) storeSet(key::Telemetry, consent);
        storeSet(key::UsageStarts, Json(3));
        writeCrash(kRecord);
        net::sendReports(dir_.string(), poster("{}"), kNow);
        EXPECT_TRUE(sent.empty());
        EXPECT_FALSE(crashThere());
        EXPECT_EQ(storeGet(key::UsageStarts).asNumber(-1), 3) << "the counts stay home";
        EXPECT_EQ(storeGetString(key::TelemetryUid), "");
    }
}

TEST_F(Reports, theTwentyHourRuleAndTheCrashRecordDeletedOnlyWhenSent) {
    const Json pages = Json::parse(R"({"Ohms lov":3,"Forside":2})");
    const struct {
        const char* name;
        double hoursSinceLast;
        Json usage;
        double starts;
        bool crash;                       // a crash record lies there
        std::optional<std::string> reply; // none: the network fails
        bool sends;                       // and moves the time of the last report
        bool resets;
        bool crashKept;
    } rows[] = {
        {"first start", kNow / kHour, Json(), 1, false, "{}", true, true, false},
        {"exactly 20 hours; a crash goes anyway", 20, pages, 2, true, "{}", false, false, false},
        {"a little over 20 hours", 20.01, pages, 2, false, "{}", true, true, false},
        {"pages alone are enough", 30, pages, 0, false, "{}", true, true, false},
        {"nothing counted: nothing sent", 30, Json::object(), 0, false, "{}", false, false, false},
        {"a failed send waits 20 hours too", 30, pages, 2, true, std::nullopt, true, false, true},
        {"a refusal keeps the counts", 30, pages, 2, true, R"({"error":"Nej."})", true, false, true},
    };
    // Both reports name only the program's version and the uid besides their
    // own data; the uid is made at the first report and kept.
    std::string uid;
    const auto fromThisCopy = [&uid](const Sent& s) {
        EXPECT_EQ(s.path, "/telemetry");
        EXPECT_EQ(s.body.at("version").asString(), "1.0.30");
        if (uid.empty()) uid = storeGetString(key::TelemetryUid);
        EXPECT_EQ(s.body.at("uid").asString(), uid);
        EXPECT_EQ(s.body.obj.size(), s.body.has("text") ? 4u : 5u) << Json::dump(s.body, 0);
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        sent.clear();
        storeSet(key::Telemetry, Json(true));
        const double last = kNow - row.hoursSinceLast * kHour;
        storeSet(key::TelemetryLast, Json(last));
        storeSet(key::Usage, row.usage);
        storeSet(key::UsageStarts, Json(row.starts));
        std::filesystem::remove(dir_ / "crash.txt");
        if (row.crash) writeCrash(kRecord);
        net::sendReports(dir_.string(), poster(row.reply), kNow);
        const Sent* usage = sentKind("usage");
        ASSERT_EQ(usage != nullptr, row.sends);
        if (usage) {
            fromThisCopy(*usage);
            EXPECT_EQ(Json::dump(usage->body.at("pages"), 0),
                      row.usage.isObject() ? Json::dump(row.usage, 0) : "{}");
            EXPECT_EQ(usage->body.at("starts").asNumber(-1), row.starts);
        }
        EXPECT_EQ(storeGet(key::TelemetryLast).asNumber(0), row.sends ? kNow : last);
        EXPECT_EQ(Json::dump(storeGet(key::Usage), 0), row.resets ? "{}" : Json::dump(row.usage, 0));
        EXPECT_EQ(storeGet(key::UsageStarts).asNumber(-1), row.resets ? 0 : row.starts);

        const Sent* crash = sentKind("crash");
        ASSERT_EQ(crash != nullptr, row.crash);
        if (crash) {
            fromThisCopy(*crash);
            EXPECT_EQ(crash->body.at("text").asString(), kRecord);
        }
        EXPECT_EQ(crashThere(), row.crashKept);
    }
    EXPECT_EQ(uid.size(), 24u);
    EXPECT_EQ(uid.find_first_not_of("0123456789abcdef"), std::string::npos);
}

TEST_F(Reports, visitsCountedWhileTheReportIsUnderWayAreKept) {
    storeSet(key::Telemetry, Json(true));
    storeSet(key::Usage, Json::parse(R"({"Ohms lov":3,"Kabel":1})"));
    storeSet(key::UsageStarts, Json(2));
    net::sendReports(
        dir_.string(),
        [](const std::string&, const std::string&, std::string& out, std::string&) {
            // The student goes on working meanwhile.
            storeSet(key::Usage, Json::parse(R"({"Ohms lov":5,"Kabel":1,"Forside":1})"));
            storeSet(key::UsageStarts, Json(3));
            out = "{}";
            return true;
        },
        kNow);
    EXPECT_EQ(Json::dump(storeGet(key::Usage), 0), R"({"Forside":1,"Ohms lov":2})");
    EXPECT_EQ(storeGet(key::UsageStarts).asNumber(-1), 1);
}

} // namespace
