#include "fl/practice/worksheet.h"

#include "fl/practice/exam.h"

#include <algorithm>

namespace fl {

namespace {

constexpr int kRedraws = 3;

std::string answerUnit(const Exercise& ex) {
    return ex.scale == 1e-6 ? "µF" : ex.unit;
}

// A piece of markup without images of its own.
void addText(RenderResult& out, const std::string& html) {
    out.html += html;
}

} // namespace

const std::vector<std::pair<std::string, std::string>>& facitChoices() {
    static const std::vector<std::pair<std::string, std::string>> table = {
        {"svar", "Kun facit"}, {"losning", "Facit og hele løsningen"}, {"ingen", "Uden facit"}};
    return table;
}

WorksheetOptions worksheetOptionsFromJson(const Json& value) {
    WorksheetOptions o;
    if (value.at("topic").isString()) o.topic = value.at("topic").asString();
    const int count = static_cast<int>(value.at("count").asNumber(o.count));
    if (std::find(kWorksheetCounts.begin(), kWorksheetCounts.end(), count) != kWorksheetCounts.end()) o.count = count;
    for (const auto& [key, label] : facitChoices())
        if (value.at("facit").asString() == key) o.facit = key;
    o.room = value.at("room").asBool(false);
    return o;
}

Json worksheetOptionsToJson(const WorksheetOptions& o) {
    Json out = Json::object();
    out["topic"] = Json(o.topic);
    out["count"] = Json(o.count);
    out["facit"] = Json(o.facit);
    out["room"] = Json(o.room);
    return out;
}

Worksheet drawWorksheet(const WorksheetOptions& options, const std::string& topicLabel, const std::string& date,
                        const std::function<Exercise()>& draw) {
    Worksheet ws;
    ws.options = options;
    ws.topicLabel = topicLabel;
    ws.date = date;
    for (int i = 0; i < options.count; ++i)
        for (int attempt = 0; attempt <= kRedraws; ++attempt)
            if (Exercise ex = draw(); !ex.empty()) {
                ws.exercises.push_back(std::move(ex));
                break;
            }
    return ws;
}

std::string worksheetAnswer(const Exercise& ex) {
    return shownValue(ex.facit, ex.unit);
}

RenderResult worksheetRender(const Worksheet& ws, bool withFacit) {
    const WorksheetOptions& o = ws.options;
    const bool facit = o.facit != "ingen";
    RenderResult out;
    addText(out, "<div class=\"card sheet\" id=\"wssheet\"><div class=\"sheet-head\"><div class=\"crumb\">Opgaveark · " +
                     ws.topicLabel + " · " + ws.date + " · " + std::to_string(ws.exercises.size()) +
                     " opgaver</div><h2>Opgaveark</h2></div>");
    addText(out, "<p class=\"wsname\">Navn: ______________________ &nbsp;&nbsp; Klasse: ______________ &nbsp;&nbsp; "
                 "Dato: ______________</p>");
    addText(out, std::string("<p class=\"hint0\">Regn opgaverne, og skriv svaret med enhed. Vis dine mellemregninger.") +
                     (facit ? " Facit står bagerst." : "") + "</p>");
    for (size_t i = 0; i < ws.exercises.size(); ++i) {
        const Exercise& ex = ws.exercises[i];
        const std::string n = std::to_string(i + 1);
        SetAsidePass aside; // a circuit's drawing is numbered within this sheet
        // An exercise and its box stay on one page of paper.
        std::string html = "<div class=\"pdf-keep\"><div class=\"wsprob\"><p class=\"h4\">Opgave " + n +
                           ": " + symbolHtml(ex.title) + " <span class=\"crumb\">· " + ex.topic +
                           "</span></p>" + exerciseStatementHtml(ex) +
                           "<p class=\"wsans\">Svar: ______________________ " + answerUnit(ex) + "</p></div>";
        if (o.room)
            html += "<div class=\"wsbox\"><p>&nbsp;</p><p>&nbsp;</p><p>&nbsp;</p><p>&nbsp;</p><p>&nbsp;</p></div>";
        out.append(takeRender(html + "</div>"));
    }
    if (facit && withFacit) {
        std::string table = "<div class=\"wsfac\"><h3 class=\"sh pdf-break\">Facit</h3><div class=\"tbl\"><table "
                            "class=\"wsfact\"><tr><th>Opgave</th><th>Emne</th><th>Facit</th></tr>";
        for (size_t i = 0; i < ws.exercises.size(); ++i)
            table += "<tr><td>" + std::to_string(i + 1) + "</td><td>" + ws.exercises[i].topic + "</td><td><b>" +
                     worksheetAnswer(ws.exercises[i]) + "</b></td></tr>";
        addText(out, table + "</table></div>");
        if (o.facit == "losning") {
            for (size_t i = 0; i < ws.exercises.size(); ++i) {
                const Exercise& ex = ws.exercises[i];
                // On paper the heading goes with the start of its solution.
                addText(out, "<div class=\"pdf-next\"><h3 class=\"sh\">Løsning til opgave " +
                                 std::to_string(i + 1) + ": " + symbolHtml(ex.title) +
                                 " <span class=\"crumb\">(facit " + worksheetAnswer(ex) +
                                 ")</span></h3></div>");
                SetAsidePass aside;
                out.append(exerciseSolution(ex));
            }
        }
        addText(out, "</div>");
    }
    addText(out, "</div>");
    return out;
}

} // namespace fl
