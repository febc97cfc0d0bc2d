// HTTP glue: sessions in cookies, CSRF on every form, the brake on wrong
// passwords, ownership of every class checked against the signed-in teacher,
// and the API under /api with JSON errors. Pages are rendered in pages.cpp.
#include "server/web.h"

#include "fl/circuit/json.h"
#include "server/api.h"
#include "server/auth.h"
#include "server/classroom.h"
#include "server/html.h"
#include "server/pages.h"
#include "server/reports.h"
#include "server/storage.h"

#include <httplib.h>

#include <algorithm>
#include <chrono>
#include <optional>

namespace server {

std::string siteCss();
std::string siteJs();

namespace {

constexpr double kSessionSeconds = 12 * 3600;
constexpr const char* kSessionCookie = "ov_session";
constexpr const char* kFormCookie = "ov_form"; // the sign-in forms' token, before there is a session

double now() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count() / 1000.0;
}

std::string cookie(const httplib::Request& req, const std::string& name) {
    const std::string header = req.get_header_value("Cookie");
    size_t pos = 0;
    while (pos < header.size()) {
        size_t end = header.find(';', pos);
        if (end == std::string::npos) end = header.size();
        size_t start = header.find_first_not_of(' ', pos);
        const size_t eq = header.find('=', start);
        if (start < end && eq < end && header.compare(start, eq - start, name) == 0)
            return header.substr(eq + 1, end - eq - 1);
        pos = end + 1;
    }
    return {};
}

void setCookie(httplib::Response& res, const std::string& name, const std::string& value, double maxAge) {
    res.set_header("Set-Cookie", name + "=" + value + "; Path=/; Max-Age=" + std::to_string(long(maxAge)) +
                                     "; HttpOnly; Secure; SameSite=Strict");
}

// A form field of a multipart body, or of a urlencoded one.
std::string field(const httplib::Request& req, const std::string& name) {
    if (req.has_file(name)) return req.get_file_value(name).content;
    return req.get_param_value(name);
}

std::vector<std::string> fields(const httplib::Request& req, const std::string& name) {
    std::vector<std::string> out;
    const auto range = req.files.equal_range(name);
    for (auto it = range.first; it != range.second; ++it) out.push_back(it->second.content);
    return out;
}

void html(httplib::Response& res, const std::string& body, int status = 200) {
    res.status = status;
    res.set_header("Cache-Control", "no-store");
    res.set_content(body, "text/html; charset=utf-8");
}

void redirect(httplib::Response& res, const std::string& to) {
    res.status = 303;
    res.set_header("Location", to);
}

std::string trim(const std::string& s) {
    const size_t a = s.find_first_not_of(" \t\r\n");
    if (a == std::string::npos) return {};
    return s.substr(a, s.find_last_not_of(" \t\r\n") - a + 1);
}

std::string lower(std::string s) {
    for (char& c : s)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return s;
}

// Line ends as "\n" only, so that the program shows one break per line.
std::string oneNewline(const std::string& s) {
    std::string out;
    for (char c : s)
        if (c != '\r') out += c;
    return out;
}

struct Signed {
    Teacher teacher;
    Session session;
};

class Site {
  public:
    Site(Storage& storage, const WebSettings& settings) : db_(storage), settings_(settings) {}

    void mount(httplib::Server& http) {
        http.Get("/static/site.css", [](const httplib::Request&, httplib::Response& res) {
            res.set_header("Cache-Control", "max-age=3600");
            res.set_content(siteCss(), "text/css; charset=utf-8");
        });
        http.Get("/static/site.js", [](const httplib::Request&, httplib::Response& res) {
            res.set_header("Cache-Control", "max-age=3600");
            res.set_content(siteJs(), "text/javascript; charset=utf-8");
        });
        http.Get("/", [this](const httplib::Request& req, httplib::Response& res) {
            redirect(res, signedIn(req) ? "/klasser" : "/login");
        });
        http.Get("/login", [this](const auto& req, auto& res) { showSignIn(req, res, {}); });
        http.Post("/login", [this](const auto& req, auto& res) { signIn(req, res); });
        http.Get("/opret", [this](const auto& req, auto& res) { showSignUp(req, res, {}); });
        http.Post("/opret", [this](const auto& req, auto& res) { signUp(req, res); });
        http.Post("/logud", [this](const auto& req, auto& res) {
            if (auto s = posted(req, res)) db_.removeSession(s->session.tokenHash);
            setCookie(res, kSessionCookie, "", 0);
            redirect(res, "/login");
        });
        http.Get("/klasser", [this](const auto& req, auto& res) {
            if (auto s = page(req, res)) showClasses(*s, res, {});
        });
        http.Post("/klasser", [this](const auto& req, auto& res) { addClass(req, res); });
        http.Get(R"(/klasse/(\d+))", [this](const auto& req, auto& res) {
            if (auto s = page(req, res))
                if (auto c = ownClass(*s, req, res)) showClass(*s, *c, res, {});
        });
        http.Post(R"(/klasse/(\d+)/opgaver)", [this](const auto& req, auto& res) { addTask(req, res); });
        http.Post(R"(/klasse/(\d+)/opgave/([0-9a-f]+)/slet)", [this](const auto& req, auto& res) {
            if (auto s = posted(req, res))
                if (auto c = ownClass(*s, req, res)) {
                    db_.deleteTask(c->id, req.matches[2], now());
                    redirect(res, "/klasse/" + std::to_string(c->id) + "#opgaver");
                }
        });
        http.Get(R"(/klasse/(\d+)/opgave/([0-9a-f]+))", [this](const auto& req, auto& res) { showTask(req, res); });
        http.Post(R"(/klasse/(\d+)/besked)", [this](const auto& req, auto& res) { setMessage(req, res); });
        http.Post(R"(/klasse/(\d+)/profil)", [this](const auto& req, auto& res) { setProfile(req, res); });
        http.Get(R"(/klasse/(\d+)/statistik)", [this](const auto& req, auto& res) {
            if (auto s = page(req, res))
                if (auto c = ownClass(*s, req, res))
                    html(res, statsPage({s->session.csrf, s->teacher.name, *c, db_.statsOf(c->id)}));
        });
        http.Post(R"(/klasse/(\d+)/statistik)", [this](const auto& req, auto& res) {
            if (auto s = posted(req, res))
                if (auto c = ownClass(*s, req, res)) {
                    c->stats = field(req, "stats") == "1";
                    db_.updateClass(*c);
                    redirect(res, "/klasse/" + std::to_string(c->id) + "#statistik");
                }
        });
        http.Post(R"(/klasse/(\d+)/slet)", [this](const auto& req, auto& res) {
            if (auto s = posted(req, res))
                if (auto c = ownClass(*s, req, res)) {
                    db_.deleteClass(c->id);
                    redirect(res, "/klasser");
                }
        });
        http.Get("/rapporter", [this](const auto& req, auto& res) {
            if (auto s = page(req, res)) showReports(*s, res);
        });
        http.Post(R"(/api(/.*))", [this](const httplib::Request& req, httplib::Response& res) {
            api(res, handleApi(db_, settings_.api, req.matches[1], req.body, now()));
        });
    }

    void showReports(const Signed& s, httplib::Response& res) {
        const auto& admins = settings_.admins;
        if (std::find(admins.begin(), admins.end(), s.teacher.email) == admins.end())
            return html(res,
                        errorPage(s.session.csrf, s.teacher.name, "Kun for administratorer",
                                  "Rapporterne fra programmet kan kun ses af serverens administratorer."),
                        403);
        constexpr int kDays = 30;
        constexpr size_t kMaxReports = 20000;
        html(res, reportsPage({s.session.csrf, s.teacher.name,
                               summariseReports(db_.reports(now() - kDays * 86400.0, kMaxReports)), kDays}));
    }

    static void api(httplib::Response& res, const ApiReply& reply) {
        res.status = reply.status;
        res.set_header("Cache-Control", "no-store");
        res.set_content(Json::dump(reply.body, 0), "application/json; charset=utf-8");
    }

  private:
    std::optional<Signed> signedIn(const httplib::Request& req) {
        const std::string token = cookie(req, kSessionCookie);
        if (token.empty()) return std::nullopt;
        std::optional<Session> s = db_.session(tokenHash(token), now());
        if (!s) return std::nullopt;
        std::optional<Teacher> t = db_.teacherById(s->teacherId);
        if (!t) return std::nullopt;
        return Signed{*t, *s};
    }

    // A page that needs a teacher: without one, to the sign-in.
    std::optional<Signed> page(const httplib::Request& req, httplib::Response& res) {
        std::optional<Signed> s = signedIn(req);
        if (!s) redirect(res, "/login");
        return s;
    }

    // A form that changes something: a teacher, and the session's own token.
    std::optional<Signed> posted(const httplib::Request& req, httplib::Response& res) {
        std::optional<Signed> s = signedIn(req);
        if (!s) {
            redirect(res, "/login");
            return std::nullopt;
        }
        if (!sameSecret(field(req, "csrf"), s->session.csrf)) {
            html(res, errorPage(s->session.csrf, s->teacher.name, "Formularen er for gammel",
                                "Siden var udløbet eller kom et andet sted fra. Gå tilbage, genindlæs siden, og "
                                "prøv igen."),
                 403);
            return std::nullopt;
        }
        return s;
    }

    // The class in the address, if it is this teacher's. Another teacher's
    // class answers exactly like one that doesn't exist.
    std::optional<ClassInfo> ownClass(const Signed& s, const httplib::Request& req, httplib::Response& res) {
        std::optional<ClassInfo> c;
        try {
            c = db_.classById(std::stoll(req.matches[1]));
        } catch (const std::out_of_range&) {
        }
        if (!c || c->teacherId != s.teacher.id) {
            html(res, errorPage(s.session.csrf, s.teacher.name, "Klassen findes ikke",
                                "Der er ingen klasse her, som er din."),
                 404);
            return std::nullopt;
        }
        return c;
    }

    std::string formToken(const httplib::Request& req, httplib::Response& res) {
        std::string token = cookie(req, kFormCookie);
        if (token.size() != 32) {
            token = randomHex(16);
            setCookie(res, kFormCookie, token, 3600);
        }
        return token;
    }

    bool formTokenOk(const httplib::Request& req) {
        return sameSecret(field(req, "csrf"), cookie(req, kFormCookie));
    }

    void showSignIn(const httplib::Request& req, httplib::Response& res, SignInView v, int status = 200) {
        v.csrf = formToken(req, res);
        html(res, signInPage(v), status);
    }

    void signIn(const httplib::Request& req, httplib::Response& res) {
        SignInView v;
        v.email = lower(trim(field(req, "email")));
        if (!formTokenOk(req)) {
            v.error = "Siden var udløbet. Prøv igen.";
            return showSignIn(req, res, v, 403);
        }
        const double t = now();
        const std::string byName = "e:" + v.email;
        const std::string byAddress = "a:" + req.remote_addr;
        const Storage::Failures fName = db_.failures(byName);
        const Storage::Failures fAddress = db_.failures(byAddress);
        const double wait = std::max(signInWait(fName.count, fName.last, t), signInWait(fAddress.count, fAddress.last, t));
        if (wait > 0) {
            v.error = "For mange forkerte forsøg. Vent " + std::to_string(static_cast<int>(wait + 0.999)) +
                      " sekunder, og prøv igen.";
            return showSignIn(req, res, v, 429);
        }
        const std::optional<Teacher> teacher = db_.teacherByEmail(v.email);
        // Without an account the hash is checked all the same, so the time
        // taken doesn't tell which e-mails have one.
        static const std::string dummy = hashPassword("ingen-konto-her");
        const bool ok = checkPassword(teacher ? teacher->passwordHash : dummy, field(req, "password")) && teacher;
        if (!ok) {
            // The wait counts from the answer, not from before the slow hash:
            // on a busy server the hash alone could use up the wait.
            const double answered = now();
            db_.addFailure(byName, answered);
            db_.addFailure(byAddress, answered);
            v.error = "Forkert e-mail eller adgangskode.";
            return showSignIn(req, res, v, 401);
        }
        db_.clearFailures(byName);
        db_.clearFailures(byAddress);
        startSession(res, teacher->id);
        redirect(res, "/klasser");
    }

    void startSession(httplib::Response& res, int64_t teacherId) {
        const std::string token = randomHex(32);
        db_.addSession({tokenHash(token), teacherId, randomHex(32), now() + kSessionSeconds});
        setCookie(res, kSessionCookie, token, kSessionSeconds);
        setCookie(res, kFormCookie, "", 0);
    }

    void showSignUp(const httplib::Request& req, httplib::Response& res, SignUpView v, int status = 200) {
        v.csrf = formToken(req, res);
        v.needsCode = !settings_.signupCode.empty();
        html(res, signUpPage(v), status);
    }

    void signUp(const httplib::Request& req, httplib::Response& res) {
        SignUpView v;
        v.name = trim(field(req, "name"));
        v.email = lower(trim(field(req, "email")));
        const std::string password = field(req, "password");
        if (!formTokenOk(req))
            v.error = "Siden var udløbet. Prøv igen.";
        else if (v.name.empty() || v.name.size() > 120)
            v.error = "Skriv dit navn.";
        else if (v.email.find('@') == std::string::npos || v.email.size() > 200)
            v.error = "Skriv en gyldig e-mail.";
        else if (password.size() < 10)
            v.error = "Adgangskoden skal være mindst 10 tegn.";
        else if (password != field(req, "password2"))
            v.error = "De to adgangskoder er ikke ens.";
        else if (!settings_.signupCode.empty() && !sameSecret(trim(field(req, "code")), settings_.signupCode))
            v.error = "Skolens lærerkode passer ikke.";
        if (!v.error.empty()) return showSignUp(req, res, v, 400);
        const int64_t id = db_.addTeacher({0, v.email, v.name, hashPassword(password)});
        if (id == 0) {
            v.error = "Der findes allerede en konto med den e-mail. Log ind i stedet.";
            return showSignUp(req, res, v, 400);
        }
        startSession(res, id);
        redirect(res, "/klasser");
    }

    void showClasses(const Signed& s, httplib::Response& res, const std::string& error, int status = 200) {
        ClassesView v{s.session.csrf, s.teacher.name, db_.classesOf(s.teacher.id), {}, error};
        for (const ClassInfo& c : v.classes) v.taskCounts[c.id] = db_.tasksOf(c.id).size();
        html(res, classesPage(v), status);
    }

    void addClass(const httplib::Request& req, httplib::Response& res) {
        std::optional<Signed> s = posted(req, res);
        if (!s) return;
        const std::string name = trim(field(req, "name"));
        if (name.empty() || name.size() > 80) return showClasses(*s, res, "Giv klassen et navn.", 400);
        ClassInfo c;
        c.teacherId = s->teacher.id;
        c.name = name;
        int64_t id = 0;
        // A code already in use is drawn again; with 32⁸ codes that is rare.
        for (int tries = 0; id == 0 && tries < 20; ++tries) {
            c.code = newClassCode();
            id = db_.addClass(c);
        }
        if (id == 0) return showClasses(*s, res, "Klassen kunne ikke oprettes. Prøv igen.", 500);
        redirect(res, "/klasse/" + std::to_string(id));
    }

    void showClass(const Signed& s, const ClassInfo& c, httplib::Response& res, ClassView v, int status = 200) {
        v.csrf = s.session.csrf;
        v.teacherName = s.teacher.name;
        v.cls = c;
        v.tasks = db_.tasksOf(c.id);
        for (const Task& t : v.tasks) {
            auto& counts = v.answerCounts[t.id];
            for (const Answer& a : db_.answersOf(c.id, t.id)) (a.status == "question" ? counts.second : counts.first)++;
        }
        v.statsStudents = static_cast<int>(db_.statsOf(c.id).size());
        html(res, classPage(v), status);
    }

    void addTask(const httplib::Request& req, httplib::Response& res) {
        std::optional<Signed> s = posted(req, res);
        if (!s) return;
        std::optional<ClassInfo> c = ownClass(*s, req, res);
        if (!c) return;
        ClassView v;
        v.draft = {trim(field(req, "title")), oneNewline(trim(field(req, "text"))), trim(field(req, "due")),
                   field(req, "mode"), trim(field(req, "circuit"))};
        v.errorAt = "task";
        Task t;
        t.classId = c->id;
        t.title = v.draft.title;
        t.text = v.draft.text;
        t.mode = v.draft.mode;
        bool modeOk = false;
        for (const auto& [id, label] : taskModes()) modeOk = modeOk || id == t.mode;
        fl::Circuit circuit;
        if (t.title.empty() || t.title.size() > 200)
            v.error = "Giv opgaven en overskrift.";
        else if (t.text.size() > 20000)
            v.error = "Opgaveteksten er for lang.";
        else if (!v.draft.due.empty() && (t.due = danishDate(v.draft.due)).empty())
            v.error = "Afleveringsdatoen kunne ikke læses. Vælg en dato i kalenderen.";
        else if (!modeOk)
            v.error = "Vælg, hvad eleven må bruge kredsløbet til.";
        else if (!v.draft.circuit.empty() && !fl::fromText(v.draft.circuit, circuit))
            v.error = "Kredsløbet kunne ikke læses. Tryk »Kopiér kredsløb« i programmet igen, og sæt hele "
                      "teksten ind.";
        if (!v.error.empty()) return showClass(*s, *c, res, v, 400);
        if (!v.draft.circuit.empty()) t.circuit = fl::toText(circuit);
        t.id = randomHex(8);
        t.created = now();
        db_.addTask(t, t.created);
        redirect(res, "/klasse/" + std::to_string(c->id) + "#opgaver");
    }

    void showTask(const httplib::Request& req, httplib::Response& res) {
        std::optional<Signed> s = page(req, res);
        if (!s) return;
        std::optional<ClassInfo> c = ownClass(*s, req, res);
        if (!c) return;
        std::optional<Task> t = db_.task(c->id, req.matches[2]);
        if (!t)
            return html(res, errorPage(s->session.csrf, s->teacher.name, "Opgaven findes ikke",
                                       "Opgaven er måske slettet."),
                        404);
        html(res, taskPage({s->session.csrf, s->teacher.name, *c, *t, db_.answersOf(c->id, t->id)}));
    }

    void setMessage(const httplib::Request& req, httplib::Response& res) {
        std::optional<Signed> s = posted(req, res);
        if (!s) return;
        std::optional<ClassInfo> c = ownClass(*s, req, res);
        if (!c) return;
        const std::string message = field(req, "clear") == "1" ? "" : oneNewline(trim(field(req, "message")));
        if (message.size() > 2000) {
            ClassView v;
            v.error = "Beskeden er for lang.";
            v.errorAt = "message";
            return showClass(*s, *c, res, v, 400);
        }
        if (message != c->message) {
            c->message = message;
            // A new id, so that students who closed the last message see this one.
            c->messageId = message.empty() ? "" : randomHex(6);
            db_.updateClass(*c);
        }
        redirect(res, "/klasse/" + std::to_string(c->id) + "#besked");
    }

    void setProfile(const httplib::Request& req, httplib::Response& res) {
        std::optional<Signed> s = posted(req, res);
        if (!s) return;
        std::optional<ClassInfo> c = ownClass(*s, req, res);
        if (!c) return;
        const ProfileChoice choice = chooseProfile(field(req, "profile"), fields(req, "off"), c->off);
        c->profile = choice.profile;
        c->off = choice.off;
        db_.updateClass(*c);
        redirect(res, "/klasse/" + std::to_string(c->id) + "#profil");
    }

    Storage& db_;
    const WebSettings& settings_;
};

} // namespace

std::shared_ptr<void> mount(httplib::Server& http, Storage& storage, const WebSettings& settings) {
    auto site = std::make_shared<Site>(storage, settings);
    site->mount(http);
    http.set_default_headers({
        {"X-Content-Type-Options", "nosniff"},
        {"Referrer-Policy", "same-origin"},
        {"X-Frame-Options", "DENY"},
        {"Content-Security-Policy",
         "default-src 'none'; style-src 'self'; script-src 'self'; img-src 'self' data:; form-action 'self'; "
         "frame-ancestors 'none'; base-uri 'none'"},
        {"Strict-Transport-Security", "max-age=31536000"},
    });
    // Only for refusals that the library makes itself (no route, too large):
    // a handler's own 4xx already has its body.
    http.set_error_handler(httplib::Server::HandlerWithResponse([](const httplib::Request& req, httplib::Response& res) {
        if (!res.body.empty()) return httplib::Server::HandlerResponse::Unhandled;
        const bool isApi = req.path.rfind("/api/", 0) == 0 || req.path == "/api";
        std::string text;
        switch (res.status) {
        case 413: text = "Forespørgslen er for stor (højst 256 KB)."; break;
        case 404: text = isApi ? "Ukendt adresse." : "Siden findes ikke."; break;
        case 405: text = "Den metode bruges ikke her."; break;
        case 400: text = "Forespørgslen kunne ikke læses."; break;
        default: text = res.status >= 500 ? "Der skete en fejl på serveren. Prøv igen om lidt." : "Forespørgslen blev afvist.";
        }
        if (isApi)
            Site::api(res, apiError(res.status, text));
        else
            html(res, errorPage("", "", res.status == 404 ? "Siden findes ikke" : "Fejl", text), res.status);
        return httplib::Server::HandlerResponse::Handled;
    }));
    http.set_exception_handler([](const httplib::Request& req, httplib::Response& res, std::exception_ptr) {
        res.status = 500;
        if (req.path.rfind("/api/", 0) == 0)
            Site::api(res, apiError(500, "Der skete en fejl på serveren. Prøv igen om lidt."));
        else
            html(res, errorPage("", "", "Fejl", "Der skete en fejl på serveren. Prøv igen om lidt."), 500);
    });
    return site;
}

} // namespace server
