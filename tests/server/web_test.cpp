// The teacher's web page over real HTTPS: sessions and their cookies, CSRF,
// one teacher's classes hidden from another, escaped student text, the brake
// on wrong passwords, size limits, and a task form that loses nothing.
#include "tests/server/test_server.h"

#include <chrono>
#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <thread>

namespace {

using testsupport::TestCerts;
using testsupport::TestServer;

// A browser of sorts: keeps cookies, posts multipart forms with the page's
// CSRF token unless told otherwise.
class Browser {
  public:
    Browser(const TestCerts& certs, int port) : cli_("127.0.0.1", port) {
        cli_.set_ca_cert_path(certs.path("ca.pem"));
        cli_.enable_server_certificate_verification(true);
    }
    httplib::Result get(const std::string& path) {
        static const std::regex token(R"re(name="csrf" value="([0-9a-f]+)")re");
        httplib::Result r = cli_.Get(path, headers());
        keep(r);
        std::smatch m;
        if (r && std::regex_search(r->body, m, token)) csrf = m[1].str();
        return r;
    }
    httplib::Result post(const std::string& path, httplib::MultipartFormDataItems items,
                         bool withToken = true) {
        if (withToken) items.push_back({"csrf", csrf, "", ""});
        httplib::Result r = cli_.Post(path, headers(), items);
        keep(r);
        return r;
    }
    // Every Set-Cookie line of the last response.
    std::vector<std::string> setCookies;
    std::string csrf;

  private:
    httplib::Headers headers() const {
        std::string line;
        for (const auto& [name, value] : cookies_)
            line += (line.empty() ? "" : "; ") + name + "=" + value;
        return line.empty() ? httplib::Headers{} : httplib::Headers{{"Cookie", line}};
    }
    void keep(const httplib::Result& r) {
        setCookies.clear();
        if (!r) return;
        const auto range = r->headers.equal_range("Set-Cookie");
        for (auto it = range.first; it != range.second; ++it) {
            setCookies.push_back(it->second);
            const std::string& c = it->second;
            const size_t eq = c.find('='), end = c.find(';');
            cookies_[c.substr(0, eq)] = c.substr(eq + 1, end - eq - 1);
        }
    }
    httplib::SSLClient cli_;
    std::map<std::string, std::string> cookies_;
};

class WebTest : public testsupport::TlsSuite {
  protected:
    void SetUp() override { srv = std::make_unique<TestServer>(*certs); }

    // Fills in the sign-up form; without the token when told so.
    static httplib::Result signUpIn(Browser& b, const std::string& email, bool withToken = true) {
        b.get("/opret");
        return b.post("/opret",
                      {{"name", "Ane", "", ""},
                       {"email", email, "", ""},
                       {"password", "rigtig-hemmelig", "", ""},
                       {"password2", "rigtig-hemmelig", "", ""}},
                      withToken);
    }

    std::unique_ptr<Browser> signUp(const std::string& email) {
        auto b = std::make_unique<Browser>(*certs, srv->port);
        EXPECT_EQ(signUpIn(*b, email)->status, 303);
        b->get("/klasser");
        return b;
    }

    // Creates a class and returns its page's address.
    std::string addClass(Browser& b, const std::string& name) {
        httplib::Result r = b.post("/klasser", {{"name", name, "", ""}});
        EXPECT_EQ(r->status, 303);
        return r->get_header_value("Location");
    }

    std::unique_ptr<TestServer> srv;
};

TEST_F(WebTest, cookiesAreHttpOnlySecureAndStrict) {
    Browser b(*certs, srv->port);
    b.get("/login");
    ASSERT_EQ(b.setCookies.size(), 1u);
    const std::string flags = "; Path=/; Max-Age=3600; HttpOnly; Secure; SameSite=Strict";
    EXPECT_EQ(b.setCookies[0].substr(b.setCookies[0].find(';')), flags);
}

TEST_F(WebTest, formsWithoutTheirTokenChangeNothing) {
    Browser stranger(*certs, srv->port);
    signUpIn(stranger, "x@skole.dk", false);
    EXPECT_FALSE(srv->db->teacherByEmail("x@skole.dk"));

    auto ane = signUp("ane@skole.dk");
    const int64_t teacher = srv->db->teacherByEmail("ane@skole.dk")->id;
    EXPECT_EQ(ane->post("/klasser", {{"name", "1A", "", ""}}, false)->status, 403);
    EXPECT_EQ(ane->post("/klasser", {{"name", "1A", "", ""}, {"csrf", std::string(64, 'a'), "", ""}}, false)
                  ->status,
              403);
    EXPECT_TRUE(srv->db->classesOf(teacher).empty());
    EXPECT_EQ(ane->post("/klasser", {{"name", "1A", "", ""}})->status, 303);
    EXPECT_EQ(srv->db->classesOf(teacher).size(), 1u);
}

TEST_F(WebTest, aTeacherSeesOnlyTheirOwnClasses) {
    auto ane = signUp("ane@skole.dk");
    const std::string page = addClass(*ane, "Anes hold");
    const server::ClassInfo cls = srv->db->classesOf(srv->db->teacherByEmail("ane@skole.dk")->id).at(0);

    auto bo = signUp("bo@skole.dk");
    EXPECT_EQ(bo->get("/klasser")->body.find("Anes hold"), std::string::npos);
    for (const std::string& path : {page, page + "/statistik", page + "/opgave/0011aabb"}) {
        httplib::Result r = bo->get(path);
        EXPECT_EQ(r->status, 404) << path;
        EXPECT_EQ(r->body.find(cls.code.substr(0, 4)), std::string::npos) << path;
    }
    for (const std::string& path : {page + "/besked", page + "/profil", page + "/slet", page + "/opgaver"})
        EXPECT_EQ(
            bo->post(path, {{"message", "hacket", "", ""}, {"off", "kreds", "", ""}, {"title", "x", "", ""}})
                ->status,
            404)
            << path;
    const server::ClassInfo after = *srv->db->classById(cls.id);
    EXPECT_EQ(after.message, "");
    EXPECT_TRUE(after.off.empty());
    EXPECT_TRUE(srv->db->tasksOf(cls.id).empty());
}

TEST_F(WebTest, wrongPasswordsAreSlowedDown) {
    signUp("ane@skole.dk");
    Browser b(*certs, srv->port);
    b.get("/login");
    const auto attempt = [&](const std::string& password) {
        return b.post("/login", {{"email", "ane@skole.dk", "", ""}, {"password", password, "", ""}});
    };
    const auto waitSaid = [](const std::string& body) {
        static const std::regex said(R"(For mange forkerte forsøg\. Vent (\d+) sekunder, og prøv igen\.)");
        std::smatch m;
        return std::regex_search(body, m, said) ? std::stoi(m[1].str()) : -1;
    };
    // The brake doubles with each wrong password after the free ones. A busy
    // machine may take longer between tries than the first waits, so the
    // tries go on, sleeping out each wait, until the brake is long enough
    // for the right password to meet it.
    int wrong = 0;
    while (wrong < 5) {
        httplib::Result r = attempt("forkert");
        if (r->status == 429) {
            ASSERT_GE(wrong, 3) << "braked before the free tries were used";
            const int wait = waitSaid(r->body);
            ASSERT_GE(wait, 1);
            std::this_thread::sleep_for(std::chrono::seconds(wait));
            continue;
        }
        ASSERT_EQ(r->status, 401);
        EXPECT_NE(r->body.find("Forkert e-mail eller adgangskode."), std::string::npos);
        ++wrong;
    }
    httplib::Result r = attempt("rigtig-hemmelig");
    EXPECT_EQ(r->status, 429);
    EXPECT_GE(waitSaid(r->body), 1);
}

TEST_F(WebTest, limitsAndRefusalsOfTheApi) {
    httplib::SSLClient cli("127.0.0.1", srv->port);
    cli.set_ca_cert_path(certs->path("ca.pem"));
    httplib::Result big = cli.Post("/api/check", std::string(256 * 1024 + 1, ' '), "application/json");
    ASSERT_TRUE(big);
    EXPECT_EQ(big->status, 413);
    EXPECT_EQ(big->body, R"({"error":"Forespørgslen er for stor (højst 256 KB)."})");
    EXPECT_EQ(cli.Post("/api/check", std::string(200 * 1024, ' ') + "{}", "application/json")->status, 400);
}

// A task's way: a refused form keeps what was typed, the stored task holds
// it as meant, and the student's answers come back escaped on its page.
TEST_F(WebTest, aTaskLosesNothingAndItsAnswersAreEscaped) {
    auto ane = signUp("ane@skole.dk");
    const std::string page = addClass(*ane, "1A");
    const auto send = [&](const std::string& circuit) {
        return ane->post(page + "/opgaver", {{"title", "Kreds & spænding", "", ""},
                                             {"text", "Find strømmen.\r\nVis mellemregninger.", "", ""},
                                             {"due", "2026-12-04", "", ""},
                                             {"mode", "guide", "", ""},
                                             {"circuit", circuit, "", ""}});
    };
    httplib::Result r = send("{\"mode\":\"dc\"");
    EXPECT_EQ(r->status, 400);
    EXPECT_NE(r->body.find("Kredsløbet kunne ikke læses."), std::string::npos);
    EXPECT_NE(r->body.find("value=\"Kreds &amp; spænding\""), std::string::npos);
    EXPECT_NE(r->body.find("{&quot;mode&quot;:&quot;dc&quot;"), std::string::npos);

    const std::string circuit =
        R"({"mode":"ac","src":{"U":"230","f":"50"},"root":{"k":"S","ch":[{"k":"R","v":"10"},)"
        R"({"k":"L","v":"0,1"}]}})";
    r = send(circuit);
    EXPECT_EQ(r->status, 303);
    const server::ClassInfo cls = srv->db->classesOf(srv->db->teacherByEmail("ane@skole.dk")->id).at(0);
    const server::Task t = srv->db->tasksOf(cls.id).at(0);
    EXPECT_EQ(t.text, "Find strømmen.\nVis mellemregninger.");
    EXPECT_EQ(t.due, "4.12.2026");
    EXPECT_EQ(t.mode, "guide");
    Json stored;
    ASSERT_TRUE(Json::tryParse(t.circuit, stored));
    EXPECT_EQ(stored.at("mode").asString(), "ac");
    EXPECT_EQ(stored.at("root").at("ch").asArray().size(), 2u);

    srv->db->addAnswer(cls.id, {0, t.id, "u1", "<script>alert(1)</script>", "question",
                                "<img src=x onerror=alert(2)>", 1000});
    const std::string html = ane->get(page + "/opgave/" + t.id)->body;
    EXPECT_NE(html.find("&lt;script&gt;alert(1)&lt;/script&gt;"), std::string::npos);
    EXPECT_NE(html.find("&lt;img src=x onerror=alert(2)&gt;"), std::string::npos);
    EXPECT_EQ(html.find("<script>alert"), std::string::npos);
    EXPECT_EQ(html.find("<img"), std::string::npos);
}

TEST_F(WebTest, onlyAdministratorsReadTheReports) {
    server::WebSettings settings;
    settings.admins = {"drift@skole.dk"};
    srv = std::make_unique<TestServer>(*certs, settings);
    srv->db->addReport("bug", 0, R"({"text":"Programmet frøs","contact":""})", 1e12);
    const struct {
        const char* who; // "" for no one signed in
        int status;
    } rows[] = {{"Drift@skole.dk", 200}, {"ane@skole.dk", 403}, {"", 303}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.who);
        Browser b(*certs, srv->port);
        if (*row.who) signUpIn(b, row.who);
        const httplib::Result r = b.get("/rapporter");
        ASSERT_TRUE(r);
        EXPECT_EQ(r->status, row.status);
        EXPECT_EQ(r->body.find("Programmet frøs") != std::string::npos, row.status == 200);
    }
}

} // namespace
