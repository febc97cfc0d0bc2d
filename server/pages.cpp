#include "server/pages.h"

#include "fl/circuit/json.h"
#include "fl/formulas/lists.h"
#include "server/classroom.h"
#include "server/html.h"

#include <algorithm>
#include <set>

namespace server {

namespace {

std::string form(const std::string& action, const std::string& csrf, const std::string& inner,
                 const std::string& cls = "") {
    return "<form method=\"post\" action=\"" + esc(action) + "\" enctype=\"multipart/form-data\"" +
           (cls.empty() ? "" : " class=\"" + cls + "\"") + ">" + csrfField(csrf) + inner + "</form>";
}

std::string msg(const std::string& text, const char* kind) {
    return text.empty() ? "" : std::string("<p class=\"msg ") + kind + "\" role=\"status\">" + esc(text) + "</p>";
}

std::string classUrl(const ClassInfo& c) { return "/klasse/" + std::to_string(c.id); }

std::string circuitLine(const std::string& text) {
    fl::Circuit c;
    if (text.empty() || !fl::fromText(text, c)) return {};
    size_t parts = 0;
    fl::walk(c.root, [&](const fl::CNodePtr& n) { parts += n->group ? 0 : 1; });
    return std::string(c.mode == "ac" ? "Vekselstrøm" : "Jævnstrøm") + " · " + std::to_string(parts) +
           (parts == 1 ? " komponent" : " komponenter");
}

std::string modeLabel(const std::string& mode) {
    for (const auto& [id, label] : taskModes())
        if (id == mode) return label;
    return mode;
}

// Line feeds as the program shows them, everything else escaped.
std::string paragraphs(const std::string& text) {
    std::string out;
    for (char c : esc(text)) out += c == '\n' ? std::string("<br>") : std::string(1, c);
    return out;
}

std::string crumbs(const ClassInfo& cls, const std::string& here) {
    return "<nav class=\"crumbs\"><a href=\"/klasser\">Mine klasser</a> › " +
           (here.empty() ? esc(cls.name) : "<a href=\"" + classUrl(cls) + "\">" + esc(cls.name) + "</a> › " + here) +
           "</nav>";
}

} // namespace

const std::vector<std::pair<std::string, std::string>>& taskModes() {
    static const std::vector<std::pair<std::string, std::string>> modes = {
        {"both", "Tegn et kredsløb og fremgangsmåden"},
        {"full", "Kun Tegn et kredsløb (hele udregningen)"},
        {"guide", "Kun fremgangsmåden (eleven regner selv)"},
        {"view", "Kun tegningen"},
    };
    return modes;
}

std::string signInPage(const SignInView& v) {
    const std::string body =
        "<section class=\"card narrow\"><h1>Log ind som lærer</h1>" + msg(v.notice, "ok") + msg(v.error, "bad") +
        form("/login", v.csrf,
             "<label>E-mail<input type=\"email\" name=\"email\" autocomplete=\"username\" required value=\"" +
                 esc(v.email) +
                 "\"></label>"
                 "<label>Adgangskode<input type=\"password\" name=\"password\" autocomplete=\"current-password\" "
                 "required></label><button class=\"primary\" type=\"submit\">Log ind</button>") +
        "<p class=\"hint\">Ny lærer? <a href=\"/opret\">Opret en lærerkonto</a>.</p></section>";
    return page({"Log ind", "", ""}, body);
}

std::string signUpPage(const SignUpView& v) {
    std::string fields =
        "<label>Dit navn<input name=\"name\" autocomplete=\"name\" required maxlength=\"120\" value=\"" +
        esc(v.name) +
        "\"></label>"
        "<label>E-mail<input type=\"email\" name=\"email\" autocomplete=\"username\" required value=\"" +
        esc(v.email) +
        "\"></label>"
        "<label>Adgangskode <span class=\"hint\">(mindst 10 tegn)</span><input type=\"password\" "
        "name=\"password\" autocomplete=\"new-password\" required minlength=\"10\"></label>"
        "<label>Gentag adgangskoden<input type=\"password\" name=\"password2\" autocomplete=\"new-password\" "
        "required minlength=\"10\"></label>";
    if (v.needsCode)
        fields += "<label>Skolens lærerkode <span class=\"hint\">(fra skolens IT-ansvarlige)</span>"
                  "<input name=\"code\" required autocomplete=\"off\"></label>";
    fields += "<button class=\"primary\" type=\"submit\">Opret konto</button>";
    const std::string body = "<section class=\"card narrow\"><h1>Opret en lærerkonto</h1>" + msg(v.error, "bad") +
                             form("/opret", v.csrf, fields) +
                             "<p class=\"hint\">Har du en konto? <a href=\"/login\">Log ind</a>.</p></section>";
    return page({"Opret konto", "", ""}, body);
}

std::string classesPage(const ClassesView& v) {
    std::string body = "<h1>Mine klasser</h1>";
    if (v.classes.empty())
        body += "<p class=\"hint\">Du har ingen klasser endnu. Opret den første herunder – så får den en kode, "
                "som eleverne skriver i programmet under »Opgaver fra læreren«.</p>";
    body += "<div class=\"grid\">";
    for (const ClassInfo& c : v.classes) {
        const auto count = v.taskCounts.find(c.id);
        const size_t tasks = count == v.taskCounts.end() ? 0 : count->second;
        body += "<a class=\"card tile\" href=\"" + classUrl(c) + "\"><h2>" + esc(c.name) +
                "</h2><p class=\"code\">" + esc(showCode(c.code)) + "</p><p class=\"hint\">" +
                std::to_string(tasks) + (tasks == 1 ? " opgave" : " opgaver") +
                (c.off.empty() ? "" : " · " + std::to_string(c.off.size()) + " emner slået fra") + "</p></a>";
    }
    body += "</div><section class=\"card\"><h2>Ny klasse</h2>" + msg(v.error, "bad") +
            form("/klasser", v.csrf,
                 "<label>Klassens navn <span class=\"hint\">(fx »1. hovedforløb, hold B«)</span>"
                 "<input name=\"name\" required maxlength=\"80\"></label>"
                 "<button class=\"primary\" type=\"submit\">Opret klasse</button>",
                 "row") +
            "</section>";
    return page({"Mine klasser", v.teacherName, v.csrf}, body);
}

std::string classPage(const ClassView& v) {
    const ClassInfo& c = v.cls;
    const std::string base = classUrl(c);
    const auto errorFor = [&](const char* at) { return v.errorAt == at ? msg(v.error, "bad") : std::string(); };

    std::string body = crumbs(c, "") + "<h1>" + esc(c.name) + "</h1>" + msg(v.notice, "ok") +
                       "<section class=\"card codecard\"><p>Klassekode</p><p class=\"code big\" id=\"code\">" +
                       esc(showCode(c.code)) +
                       "</p><p class=\"hint\">Eleverne skriver koden og deres navn i programmet under "
                       "»Opgaver fra læreren«. Store og små bogstaver er lige gode.</p></section>";

    // Tasks
    body += "<section class=\"card\" id=\"opgaver\"><h2>Opgaver</h2>";
    if (v.tasks.empty()) body += "<p class=\"hint\">Ingen opgaver endnu.</p>";
    body += "<ul class=\"tasks\">";
    for (const Task& t : v.tasks) {
        const auto counts = v.answerCounts.find(t.id);
        const int done = counts == v.answerCounts.end() ? 0 : counts->second.first;
        const int questions = counts == v.answerCounts.end() ? 0 : counts->second.second;
        const std::string circuit = circuitLine(t.circuit);
        body += "<li><div><a class=\"title\" href=\"" + base + "/opgave/" + esc(t.id) + "\">" + esc(t.title) +
                "</a><span class=\"hint\">" + (t.due.empty() ? "" : "Afleveres " + esc(t.due) + " · ") +
                std::to_string(done) + " afleveret · " + std::to_string(questions) +
                (questions == 1 ? " spørgsmål" : " spørgsmål") +
                (circuit.empty() ? "" : " · Kredsløb: " + esc(circuit) + " · " + esc(modeLabel(t.mode))) +
                "</span></div>" +
                form(base + "/opgave/" + t.id + "/slet", v.csrf,
                     "<button class=\"danger small\" type=\"submit\" data-confirm=\"Slet opgaven »" + esc(t.title) +
                         "« og alle svar på den?\">Slet</button>") +
                "</li>";
    }
    body += "</ul><details" + std::string(v.errorAt == "task" ? " open" : "") +
            "><summary>Ny opgave</summary>" + errorFor("task");
    std::string modes;
    for (const auto& [id, label] : taskModes())
        modes += "<option value=\"" + id + "\"" + (id == v.draft.mode ? " selected" : "") + ">" + esc(label) +
                 "</option>";
    body += form(base + "/opgaver", v.csrf,
                 "<label>Overskrift<input name=\"title\" required maxlength=\"200\" value=\"" + esc(v.draft.title) +
                     "\"></label>"
                     "<label>Opgavetekst<textarea name=\"text\" rows=\"6\" maxlength=\"20000\">" +
                     esc(v.draft.text) +
                     "</textarea></label>"
                     "<label>Afleveres <span class=\"hint\">(valgfri)</span><input type=\"date\" name=\"due\" "
                     "value=\"" +
                     esc(v.draft.due) +
                     "\"></label>"
                     "<label>Kredsløb <span class=\"hint\">(valgfrit: tryk »Kopiér kredsløb« i programmet, og "
                     "sæt det ind her)</span><textarea name=\"circuit\" rows=\"3\" class=\"mono\" "
                     "spellcheck=\"false\">" +
                     esc(v.draft.circuit) +
                     "</textarea></label>"
                     "<label>Eleven må bruge kredsløbet i<select name=\"mode\">" +
                     modes +
                     "</select></label><button class=\"primary\" type=\"submit\">Send opgaven til klassen</button>") +
            "</details></section>";

    // Message
    body += "<section class=\"card\" id=\"besked\"><h2>Besked til klassen</h2>" + errorFor("message") +
            "<p class=\"hint\">Eleverne ser beskeden øverst i programmet, næste gang det henter fra dig. En ny "
            "besked vises igen, også for elever, der har lukket den forrige.</p>" +
            form(base + "/besked", v.csrf,
                 "<textarea name=\"message\" rows=\"3\" maxlength=\"2000\">" + esc(c.message) +
                     "</textarea><div class=\"row\"><button class=\"primary\" type=\"submit\">Gem beskeden</button>"
                     "<button type=\"submit\" name=\"clear\" value=\"1\">Fjern beskeden</button></div>") +
            "</section>";

    // Profile and topics
    std::string profile;
    for (const ProfilePreset& p : profilePresets()) {
        std::string off;
        for (const std::string& id : p.off) off += (off.empty() ? "" : " ") + id;
        profile += "<label class=\"choice\"><input type=\"radio\" name=\"profile\" value=\"" + p.id + "\"" +
                   (p.id == c.profile ? " checked" : "") + " data-off=\"" + off + "\"><span><b>" + esc(p.label) +
                   "</b> <span class=\"hint\">" + esc(p.hint) + "</span></span></label>";
    }
    const std::set<std::string> offSet(c.off.begin(), c.off.end());
    std::string topics;
    for (const fl::Topic& t : fl::topics())
        topics += "<label class=\"choice\"><input type=\"checkbox\" name=\"off\" value=\"" + t.id + "\"" +
                  (offSet.count(t.id) ? " checked" : "") + "><span><b>" + esc(t.name) + "</b> <span class=\"hint\">" +
                  esc(t.description) + "</span></span></label>";
    body += "<section class=\"card\" id=\"profil\"><h2>Profil og emner</h2>" + errorFor("profile") +
            "<p class=\"hint\">Det, du slår fra, forsvinder fra elevernes program, næste gang det henter fra "
            "dig – fx under en prøve.</p>" +
            form(base + "/profil", v.csrf,
                 "<fieldset><legend>Profil</legend>" + profile +
                     "</fieldset><fieldset><legend>Slå fra</legend><div class=\"topics\">" + topics +
                     "</div></fieldset><button class=\"primary\" type=\"submit\">Gem profil og emner</button>") +
            "</section>";

    // Statistics
    body += "<section class=\"card\" id=\"statistik\"><h2>Klassestatistik</h2><p>" +
            std::to_string(v.statsStudents) + (v.statsStudents == 1 ? " elev har" : " elever har") +
            " sendt deres øvelsesstatistik. <a href=\"" + base +
            "/statistik\">Se klassens svageste emner</a></p>" +
            form(base + "/statistik", v.csrf,
                 "<label class=\"choice\"><input type=\"checkbox\" name=\"stats\" value=\"1\"" +
                     std::string(c.stats ? " checked" : "") +
                     "><span>Elevernes program sender deres statistik (uden navn) højst én gang i døgnet</span>"
                     "</label><button type=\"submit\">Gem</button>",
                 "row") +
            "</section>";

    body += "<section class=\"card dangerzone\"><h2>Slet klassen</h2>" +
            form(base + "/slet", v.csrf,
                 "<p class=\"hint\">Klassen, dens opgaver, svar og statistik slettes. Koden holder op med at "
                 "virke.</p><button class=\"danger\" type=\"submit\" data-confirm=\"Slet klassen »" +
                     esc(c.name) + "« med alle opgaver og svar? Det kan ikke fortrydes.\">Slet klassen</button>") +
            "</section>";
    return page({c.name, v.teacherName, v.csrf}, body);
}

std::string taskPage(const TaskView& v) {
    const Task& t = v.task;
    int done = 0, questions = 0;
    std::set<std::string> students;
    for (const Answer& a : v.answers) {
        (a.status == "question" ? questions : done)++;
        students.insert(a.uid);
    }
    std::string body = crumbs(v.cls, esc(t.title)) + "<h1>" + esc(t.title) + "</h1><section class=\"card\">" +
                       (t.due.empty() ? "" : "<p class=\"hint\">Afleveres " + esc(t.due) + "</p>") + "<p>" +
                       paragraphs(t.text) + "</p>";
    const std::string circuit = circuitLine(t.circuit);
    if (!circuit.empty())
        body += "<p class=\"hint\">Kredsløb vedhæftet: " + esc(circuit) + " · " + esc(modeLabel(t.mode)) + "</p>";
    body += "</section><section class=\"card\"><h2>Svar og spørgsmål</h2><p class=\"hint\">" + std::to_string(done) +
            " afleveret · " + std::to_string(questions) + " spørgsmål · fra " + std::to_string(students.size()) +
            (students.size() == 1 ? " elev" : " elever") + ". Nyeste først.</p>";
    if (v.answers.empty()) {
        body += "<p>Ingen har svaret endnu.</p>";
    } else {
        body += "<table class=\"answers\"><thead><tr><th>Elev</th><th>Svar</th><th>Sendt</th></tr></thead><tbody>";
        for (const Answer& a : v.answers)
            body += "<tr class=\"" + std::string(a.status == "question" ? "q" : "d") + "\"><td data-label=\"Elev\">" +
                    esc(a.name) + "</td><td data-label=\"Svar\"><span class=\"badge\">" +
                    (a.status == "question" ? "Spørgsmål" : "Afleveret") + "</span> " + paragraphs(a.answer) +
                    "</td><td data-label=\"Sendt\">" + danishTime(a.at) + "</td></tr>";
        body += "</tbody></table>";
    }
    body += "</section>";
    return page({t.title, v.teacherName, v.csrf}, body);
}

std::string statsPage(const StatsView& v) {
    const std::vector<TopicStat> rows = classTopics(v.uploads);
    std::string body = crumbs(v.cls, "Statistik") + "<h1>Klassens svageste emner</h1><p class=\"hint\">" +
                       std::to_string(v.uploads.size()) +
                       (v.uploads.size() == 1 ? " elev har" : " elever har") +
                       " sendt statistik. Tallene er alle svar i klassen lagt sammen; de svageste emner står "
                       "først.</p>";
    if (rows.empty()) {
        body += "<section class=\"card\"><p>Ingen statistik endnu. Eleverne sender den, når de har lavet "
                "øvelser, og programmet henter fra dig.</p></section>";
    } else {
        body += "<section class=\"card\"><table class=\"stats\"><thead><tr><th>Emne</th><th>Svar</th>"
                "<th>Rigtige</th><th>Elever</th><th>Niveau</th></tr></thead><tbody>";
        for (const TopicStat& s : rows) {
            const Level level = levelOf(s.right, s.total);
            const int percent = s.total ? static_cast<int>(100.0 * s.right / s.total + 0.5) : 0;
            body += "<tr><td data-label=\"Emne\">" + esc(s.topic) + "</td><td data-label=\"Svar\">" +
                    std::to_string(s.total) + "</td><td data-label=\"Rigtige\">" + std::to_string(percent) +
                    " %</td><td data-label=\"Elever\">" + std::to_string(s.students) +
                    "</td><td data-label=\"Niveau\"><span class=\"level " + level.cls + "\">" + level.text +
                    "</span></td></tr>";
        }
        body += "</tbody></table></section>";
    }
    return page({"Statistik – " + v.cls.name, v.teacherName, v.csrf}, body);
}

std::string errorPage(const std::string& csrf, const std::string& teacherName, const std::string& title,
                      const std::string& text) {
    return page({title, teacherName, csrf}, "<section class=\"card narrow\"><h1>" + esc(title) + "</h1><p>" +
                                                esc(text) + "</p><p><a href=\"/\">Til forsiden</a></p></section>");
}

} // namespace server
