// The client side of the class service against the real server code on
// 127.0.0.1 over TLS, trusted through a test CA made for the run: what post
// answers and refuses, the job's sequence, tasks and hand-ins.
#include "net/api.h"
#include "net/http.h"
#include "net/job.h"
#include "net/tasks.h"
#include "store/datastore.h"
#include "tests/server/test_server.h"

#include <gtest/gtest.h>

namespace {

using testsupport::freePort;
using testsupport::TestServer;

const char* const kCode = "KLAS2345";

class ClientTest : public testsupport::TlsSuite {
  protected:
    void SetUp() override {
        DataStore::instance().resetForTest();
        start({});
        setenv("OSTROVALDEN_CA_FILE", certs->path("ca.pem").c_str(), 1);
    }
    void TearDown() override {
        DataStore::instance().resetForTest();
        unsetenv("OSTROVALDEN_CA_FILE");
        unsetenv("OSTROVALDEN_SERVICE_URL");
    }

    void start(const server::WebSettings& settings) {
        srv.reset();
        srv = std::make_unique<TestServer>(*certs, settings);
        setenv("OSTROVALDEN_SERVICE_URL", srv->base().c_str(), 1);
        server::ClassInfo c;
        c.message = "Husk lommeregneren i morgen.";
        c.messageId = "m1";
        c.profile = "egen";
        c.off = {"ac_komp"};
        classId = testsupport::addClass(*srv->db, kCode, c);
    }

    void addTask(const std::string& id, const std::string& title, double at) {
        const char* circuit = R"({"mode":"dc","src":{"U":"12"},"root":{"k":"S","ch":[{"k":"R","v":"100"}]}})";
        srv->db->addTask({id, classId, title, "Find I.", "", "both", circuit, at}, at);
    }

    // The real post, with every path asked for written down.
    net::Poster counting(std::vector<std::string>& calls, const std::string& failing = "") {
        return [&calls, failing](const std::string& path, const std::string& body, std::string& out,
                                 std::string& err) {
            calls.push_back(path);
            if (path == failing) {
                err = "Ingen forbindelse til serveren.";
                return false;
            }
            return net::post(path, body, out, err);
        };
    }

    net::JobInput job(std::vector<std::string>& calls, double now = 1.8e9) {
        net::JobInput in;
        in.poster = counting(calls);
        in.now = [now] { return now; };
        return in;
    }

    std::unique_ptr<TestServer> srv;
    int64_t classId = 0;
};

TEST_F(ClientTest, anyStatusBelow500IsAnAnswerAndFailuresAreDanishSentences) {
    // A path that answers with the status it names.
    const TestServer fake(*certs, {}, "cert", "key", [](httplib::Server& http) {
        http.Post(R"(/api/status/(\d+))", [](const httplib::Request& req, httplib::Response& res) {
            res.status = std::stoi(req.matches[1]);
            res.set_content("{\"error\":\"x\"}", "application/json");
        });
    });

    struct Row {
        const char* name;
        std::string base;
        const char* path;
        bool ok;
        const char* out; // or the error
    } rows[] = {
        {"499", fake.base(), "/status/499", true, R"({"error":"x"})"},
        {"500", fake.base(), "/status/500", false, "Serveren svarede med en fejl (500)."},
        {"no one listening", "https://127.0.0.1:" + std::to_string(freePort()) + "/api", "/check", false,
         "Ingen forbindelse til serveren."},
        {"plain http", "http://127.0.0.1:" + std::to_string(srv->port) + "/api", "/check", false,
         "Ugyldig serveradresse."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        std::string out = "stale", err;
        EXPECT_EQ(net::postTo(row.base, row.path, "{}", out, err), row.ok);
        EXPECT_EQ(row.ok ? out : err, row.out);
        EXPECT_EQ(row.ok ? err : out, "");
    }
}

const char* const kUntrusted =
    "Serverens certifikat kunne ikke godkendes, så der blev ikke sendt noget. Forbindelsen er måske ikke "
    "sikker – bed din lærer eller skolens IT-ansvarlige om at tjekke serverens certifikat.";

TEST_F(ClientTest, sessionKeepsOneConnectionAndVerifiesEveryServer) {
    // The system's CAs don't know the test CA.
    unsetenv("OSTROVALDEN_CA_FILE");
    std::string out, err;
    EXPECT_FALSE(net::post("/version", "{}", out, err));
    EXPECT_EQ(err, kUntrusted);
    setenv("OSTROVALDEN_CA_FILE", certs->path("ca.pem").c_str(), 1);

    storeSet(key::ClassKey, Json(kCode));
    net::Session session;
    std::vector<std::string> calls;
    net::JobInput in = job(calls);
    in.poster = net::posterOf(session);
    EXPECT_EQ(net::serviceJob(in).outcome, 1);
    EXPECT_TRUE(session.post("/tasks", R"({"key":"KLAS2345"})", out, err)) << err;
    EXPECT_EQ(session.connections(), 1);

    // A session never carries trust over to another server.
    TestServer other(*certs, {}, "other-cert", "other-key");
    EXPECT_FALSE(session.postTo(other.base(), "/version", "{}", out, err));
    EXPECT_EQ(err, kUntrusted);
    EXPECT_TRUE(session.post("/version", "{}", out, err)) << err;

    // CAs that can't be read trust nobody.
    setenv("OSTROVALDEN_CA_FILE", certs->path("nosuch.pem").c_str(), 1);
    EXPECT_FALSE(net::postTo(other.base(), "/version", "{}", out, err));
    EXPECT_EQ(err, kUntrusted);
}

TEST_F(ClientTest, checkInBringsProfileMessageAndChangedTaskLists) {
    addTask("t1", "Opgave 1", 1000);
    storeSet(key::ClassKey, Json(kCode));
    std::vector<std::string> calls;
    // A list that failed to come is asked for again at the next check-in.
    net::JobInput in = job(calls);
    in.poster = counting(calls, "/tasks");
    EXPECT_TRUE(net::serviceJob(in).newTasks.empty());
    EXPECT_EQ(storeGet(key::TasksUpdated).asNumber(0), 0);
    EXPECT_TRUE(storeGet(key::ClassTasks).isNull());

    calls.clear();
    const net::ServiceResult r = net::serviceJob(job(calls));
    EXPECT_EQ(r.outcome, 1);
    EXPECT_EQ(r.classMsg, "Husk lommeregneren i morgen.");
    EXPECT_EQ(r.classMsgId, "m1");
    EXPECT_EQ(r.off, (net::OffSet{"ac_komp"}));
    EXPECT_EQ(r.profile, "egen");
    EXPECT_EQ(r.newTasks, (std::vector<std::string>{"Opgave 1"}));
    EXPECT_EQ(r.newVersion, "");
    EXPECT_EQ(calls, (std::vector<std::string>{"/check", "/tasks", "/version"}));
    const Json tasks = storeGet(key::ClassTasks).at("tasks");
    ASSERT_EQ(tasks.asArray().size(), 1u);
    EXPECT_EQ(tasks.arr[0].at("circuit").at("mode").asString(), "dc");
    EXPECT_GT(storeGet(key::TasksUpdated).asNumber(0), 0);

    calls.clear();
    net::ServiceResult again = net::serviceJob(job(calls));
    EXPECT_EQ(calls, (std::vector<std::string>{"/check", "/version"}));
    EXPECT_TRUE(again.newTasks.empty());

    // A second task arrives; one the student has already seen elsewhere is not new.
    Json seen = Json::object();
    seen["t3"] = Json(true);
    storeSet(key::TasksSeen, seen);
    addTask("t2", "Opgave 2", 2000);
    addTask("t3", "Opgave 3", 3000);
    calls.clear();
    again = net::serviceJob(job(calls));
    EXPECT_EQ(calls, (std::vector<std::string>{"/check", "/tasks", "/version"}));
    EXPECT_EQ(again.newTasks, (std::vector<std::string>{"Opgave 2"}));
}

TEST_F(ClientTest, refusedOrMissingCodeNoNetworkAndANewVersion) {
    server::WebSettings settings;
    settings.api.latestVersion = "1.0.31";
    settings.api.downloadUrl = "https://skole.example/hent";
    start(settings);
    std::vector<std::string> calls;

    storeSet(key::ClassKey, Json("FORKERT1"));
    net::ServiceResult r = net::serviceJob(job(calls));
    EXPECT_EQ(r.outcome, -1);
    EXPECT_EQ(r.text,
              "Klassekoden findes ikke. Tjek koden, som din lærer har givet dig, under Opgaver fra læreren.");
    EXPECT_EQ(calls, (std::vector<std::string>{"/check"}));

    calls.clear();
    storeSet(key::ClassKey, Json(""));
    r = net::serviceJob(job(calls));
    EXPECT_TRUE(r.noLogin);
    EXPECT_EQ(r.outcome, 0);
    EXPECT_EQ(calls, (std::vector<std::string>{"/version"}));
    // Without a class too the student hears of a new version.
    EXPECT_EQ(r.newVersion, "1.0.31");
    EXPECT_EQ(r.versionUrl, "https://skole.example/hent");

    // No network: nothing changes, and the last known profile stays in force.
    storeSet(key::ClassKey, Json(kCode));
    net::serviceJob(job(calls));
    setenv("OSTROVALDEN_SERVICE_URL", ("https://127.0.0.1:" + std::to_string(freePort()) + "/api").c_str(),
           1);
    calls.clear();
    r = net::serviceJob(job(calls));
    EXPECT_EQ(r.outcome, 0);
    EXPECT_EQ(r.text, "Ingen forbindelse til serveren.");
    EXPECT_EQ(calls, (std::vector<std::string>{"/check"})) << "no second round of time-outs for the version";
    EXPECT_EQ(r.off, (net::OffSet{"ac_komp"}));
    EXPECT_EQ(r.newVersion, "");
}

TEST_F(ClientTest, statisticsAtMostOnceIn20HoursAndNeverWithForce) {
    storeSet(key::ClassKey, Json(kCode));
    const std::string summary = R"({"topics":{"Ohms lov":{"right":3,"total":5}},"answered":5})";
    int reports = 0;
    const auto run = [&](double now, bool force) {
        std::vector<std::string> calls;
        net::JobInput in = job(calls, now);
        in.force = force;
        in.classSummary = [&] { return summary; };
        in.sendReports = [&](const std::string&, const net::Poster&) { ++reports; };
        net::serviceJob(in);
        return calls;
    };
    const double t0 = 1.8e9;
    EXPECT_EQ(run(t0, true), (std::vector<std::string>{"/check", "/version"}));
    EXPECT_EQ(reports, 0);
    EXPECT_EQ(run(t0, false), (std::vector<std::string>{"/check", "/classstats", "/version"}));
    EXPECT_EQ(reports, 1);
    EXPECT_EQ(run(t0 + 19 * 3600, false), (std::vector<std::string>{"/check", "/version"}));
    EXPECT_EQ(run(t0 + 21 * 3600, false), (std::vector<std::string>{"/check", "/classstats", "/version"}));

    const std::vector<server::StatsUpload> stored = srv->db->statsOf(classId);
    ASSERT_EQ(stored.size(), 1u);
    EXPECT_EQ(stored[0].uid, storeGetString(key::ClassUid));
    EXPECT_EQ(stored[0].uid.size(), 24u);
    Json upload;
    ASSERT_TRUE(Json::tryParse(stored[0].summary, upload));
    EXPECT_EQ(upload.at("version").asString(), "1.0.30");
    EXPECT_FALSE(upload.has("key"));

    // The teacher says no: remembered, and nothing more goes out.
    server::ClassInfo c = *srv->db->classById(classId);
    c.stats = false;
    srv->db->updateClass(c);
    EXPECT_EQ(run(t0 + 50 * 3600, false), (std::vector<std::string>{"/check", "/version"}));
    EXPECT_FALSE(storeGet(key::ClassStats).asBool(true));
}

TEST_F(ClientTest, handInsReachTheTeacher) {
    addTask("t1", "Opgave 1", 1000);
    std::vector<std::string> calls;
    const net::Poster poster = counting(calls);
    std::string error;

    EXPECT_FALSE(net::sendAnswer(poster, "t1", "done", "0,12 A", "Ida", "1.12.2026 10:00", error));
    EXPECT_EQ(error, net::kNoClassCode);
    storeSet(key::ClassKey, Json(kCode));
    EXPECT_FALSE(net::sendAnswer(poster, "t1", "done", "0,12 A", "", "1.12.2026 10:00", error));
    EXPECT_EQ(error, "Skriv dit navn øverst først.");
    EXPECT_TRUE(calls.empty());

    ASSERT_TRUE(net::sendAnswer(poster, "t1", "done", "0,12 A", "Ida", "1.12.2026 10:00", error)) << error;
    ASSERT_TRUE(net::sendAnswer(poster, "t1", "question", "Hvorfor?", "Ida", "1.12.2026 10:05", error))
        << error;
    const Json record = storeGet(key::TaskAnswers).at("t1");
    EXPECT_EQ(record.at("status").asString(), "question");
    EXPECT_EQ(record.at("answer").asString(), "Hvorfor?");
    EXPECT_EQ(record.at("at").asString(), "1.12.2026 10:05");
    const std::vector<server::Answer> answers = srv->db->answersOf(classId, "t1");
    ASSERT_EQ(answers.size(), 2u);
    EXPECT_EQ(answers[1].answer, "0,12 A");
    EXPECT_EQ(answers[1].uid, storeGetString(key::ClassUid));

    EXPECT_FALSE(net::sendAnswer(poster, "gone", "done", "x", "Ida", "1.12.2026 10:06", error));
    EXPECT_EQ(error, "Opgaven findes ikke længere. Tryk »Hent opgaver igen«.");

    ASSERT_TRUE(net::refetchTasks(poster, error)) << error;
    EXPECT_EQ(storeGet(key::ClassTasks).at("tasks").asArray().size(), 1u);
}

} // namespace
