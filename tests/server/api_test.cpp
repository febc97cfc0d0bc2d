// The API as a function over a real SQLite file: refusals in Danish, and a
// class code that reaches only its own class.
#include "server/api.h"
#include "tests/server/temp_db.h"

namespace {

class ApiTest : public TempDbTest {
  protected:
    void SetUp() override {
        TempDbTest::SetUp();
        b = testsupport::addClass(*db, "BBBB3333");
    }
    server::ApiReply call(const std::string& path, const std::string& body) {
        return server::handleApi(*db, {}, path, body, 2000);
    }

    int64_t b = 0;
};

TEST_F(ApiTest, refusals) {
    const std::string good = R"("key":"AAAA2222","uid":"u1","name":"Ida","id":"t1","status":"done")";
    struct Row {
        const char* name;
        const char* path;
        std::string body;
        int status;
        const char* error;
    } rows[] = {
        {"not JSON", "/check", "{\"key\":", 400,
         "Forespørgslen kunne ikke læses: den er ikke et JSON-objekt."},
        {"not an object", "/check", "[1]", 400,
         "Forespørgslen kunne ikke læses: den er ikke et JSON-objekt."},
        {"unknown path", "/admin", "{}", 404, "Ukendt adresse."},
        {"key of wrong kind", "/tasks", "{\"key\":7}", 400, "Forespørgslen mangler \"key\"."},
        {"no answer member", "/tasks/answer", "{" + good + "}", 400, "Forespørgslen mangler \"answer\"."},
        {"odd status", "/tasks/answer",
         R"({"key":"AAAA2222","uid":"u1","name":"Ida","id":"t1","status":"late","answer":"x"})", 400,
         "\"status\" skal være \"done\" eller \"question\"."},
        {"answer too long", "/tasks/answer", "{" + good + ",\"answer\":\"" + std::string(4001, 'x') + "\"}",
         400, "Svaret er for langt – skriv det kortere."},
        {"another class's task", "/tasks/answer",
         R"({"key":"BBBB3333","uid":"u1","name":"M","id":"t1","status":"done","answer":"x"})", 404,
         "Opgaven findes ikke længere. Tryk »Hent opgaver igen«."},
        {"statistics without topics", "/classstats", R"({"key":"AAAA2222","uid":"u1"})", 400,
         "Forespørgslen mangler \"topics\"."},
        {"telemetry of no kind", "/telemetry", "{}", 400, "Forespørgslen mangler \"kind\"."},
        {"bug with a wrong code", "/bug", R"({"key":"ZZZZ9999","text":"x"})", 403,
         "Klassekoden findes ikke. Tjek koden, som din lærer har givet dig, under Opgaver fra læreren."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const server::ApiReply r = call(row.path, row.body);
        EXPECT_EQ(r.status, row.status);
        EXPECT_EQ(r.body.at("error").asString(), row.error);
    }
    EXPECT_TRUE(db->answersOf(a, "t1").empty());
}

TEST_F(ApiTest, aCodeReachesOnlyItsOwnClass) {
    EXPECT_EQ(call("/tasks", R"({"key":"aaaa-2222"})").body.at("tasks").asArray().size(), 1u);
    EXPECT_TRUE(call("/tasks", R"({"key":"BBBB3333"})").body.at("tasks").asArray().empty());
    EXPECT_EQ(call("/check", R"({"key":"BBBB3333"})").body.at("tasksUpdated").asNumber(-1), 0);

    EXPECT_EQ(
        call("/classstats", R"({"key":"BBBB3333","uid":"u9","topics":{"Ohm":{"right":1,"total":2}}})").status,
        200);
    EXPECT_TRUE(db->statsOf(a).empty());
    EXPECT_EQ(db->statsOf(b).size(), 1u);

    EXPECT_EQ(call("/tasks/answer",
                   R"({"key":"AAAA2222","uid":"u1","name":"Ida","id":"t1","status":"done","answer":""})")
                  .status,
              200);
    EXPECT_EQ(db->answersOf(a, "t1").size(), 1u);
}

// The rest of the check-in is read end to end by the client's tests.
TEST_F(ApiTest, checkInStampMovesWithEveryChangeOfTheList) {
    const double before = call("/check", R"({"key":"AAAA2222"})").body.at("tasksUpdated").asNumber(0);
    EXPECT_GE(before, 1000 * 1000.0) << "milliseconds";
    db->deleteTask(a, "t1", 1000); // within the same millisecond
    EXPECT_GT(db->classById(a)->tasksUpdated, before);
}

} // namespace
