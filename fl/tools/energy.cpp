// Energy and price over a year of use, and what a replacement with a smaller
// power saves and how soon it has paid for itself.
#include "fl/tools/small.h"

#include "fl/expr/numbers.h"

#include <cmath>

namespace fl {

namespace {

using tool::formatValue;
using tool::hint;

// Kroner as a bill shows them: two decimals.
std::string kroner(double v) {
    const double mag = std::fabs(v);
    const int whole = mag < 1 ? 1 : static_cast<int>(std::floor(std::log10(mag))) + 1;
    return fmtNumber(v, whole + 2) + " kr";
}

} // namespace

ToolOut energyPrice(const FormMap& form) {
    return runTool("Energi og pris", [&](ToolOut& out) {
        ToolInputs in;
        if (!openForm(out, form, in)) return;
        const std::vector<std::string> missing = missingKeys(in, {"P", "h", "k_el"});
        if (!missing.empty()) {
            refuse(out, tool::fillIn(missing), missing);
            return;
        }
        if (!refuseNegative(out, in, {"P", "n", "h", "d_dage", "k_el", "P2", "Inv"})) return;
        if (in.get("h") > 24) {
            refuse(out, "Et døgn har kun 24 timer – " + tool::symbolHtml("h") + " er brugstiden pr. dag.",
                   {"h"});
            return;
        }
        if (in.get("d_dage") > 366) {
            refuse(out, "Et år har højst 366 dage.", {"d_dage"});
            return;
        }
        const bool replace = in.has("P2");

        ToolSheet s;
        s.shown = in.shown;
        s.vars = {{"n", in.has("n") ? in.get("n") : 1.0},
                  {"h", in.get("h")},
                  {"d_dage", in.has("d_dage") ? in.get("d_dage") : 365.0},
                  {"k_el", in.get("k_el")}};
        // With a replacement the present appliance is number 1.
        const std::string p1 = replace ? "P1" : "P", e1 = replace ? "E1" : "E",
                          pris1 = replace ? "Pris1" : "Pris";
        s.vars[p1] = in.get("P");
        s.shown[p1] = in.shown.at("P");
        addGivenRow(s, replace ? "effekten af det, der bruges nu" : "effekt", "W", p1, in.shown.at("P"), p1);
        if (replace) addGivenInput(s, in, "P2", "effekten af det nye", "W");
        addGivenInput(s, in, "n", "antal", "", "1");
        addGivenInput(s, in, "h", "brugstid pr. dag", "h");
        addGivenInput(s, in, "d_dage", "dage om året", "", "365");
        addGivenInput(s, in, "k_el", "elpris", "kr/kWh");
        if (in.has("Inv")) addGivenInput(s, in, "Inv", "pris for udskiftningen", "kr");

        addStepBlock(s, replace ? "Årsforbrug nu" : "Årsforbrug", "",
                     {{"kWh", "n*" + p1 + "*h*d_dage/1000", e1}},
                     hint("Effekt gange tid giver energi: watt gange timer er Wh, og ÷ 1000 giver kWh."));
        addStepBlock(s, replace ? "Pris pr. år nu" : "Pris pr. år", "", {{"kr", e1 + "*k_el", pris1}});
        std::vector<KvItem> grid{
            {"Forbrug" + std::string(replace ? " nu" : ""), formatValue(s.vars.at(e1), "kWh/år")},
            {"Pris" + std::string(replace ? " nu" : ""), kroner(s.vars.at(pris1)) + "/år"}};
        std::string answer = "<span class=\"big\">" + formatValue(s.vars.at(e1), "kWh") + " · " +
                             kroner(s.vars.at(pris1)) + "</span> <span class=\"crumb\">pr. år</span>";
        std::vector<RecentValue> recent{{e1, s.vars.at(e1), "kWh"}, {pris1, s.vars.at(pris1), "kr"}};
        std::string title = formatValue(s.vars.at(e1), "kWh") + " om året";
        std::string notes;

        if (replace) {
            s.vars["P2"] = in.get("P2");
            addStepBlock(s, "Årsforbrug efter udskiftningen", "", {{"kWh", "n*P2*h*d_dage/1000", "E2"}});
            addStepBlock(s, "Pris pr. år efter udskiftningen", "", {{"kr", "E2*k_el", "Pris2"}});
            addStepBlock(s, "Besparelse pr. år", "",
                         {{"kWh", "E1-E2", "E_spar"}, {"kr", "Pris1-Pris2", "B_aar"}});
            const double saving = s.vars.at("B_aar");
            grid.push_back({"Forbrug efter", formatValue(s.vars.at("E2"), "kWh/år")});
            grid.push_back({"Pris efter", kroner(s.vars.at("Pris2")) + "/år"});
            grid.push_back({"Besparelse", kroner(saving) + "/år", true});
            recent = {{"B_aar", saving, "kr"}, {"E_spar", s.vars.at("E_spar"), "kWh"}};
            title = "Besparelse " + kroner(saving) + " om året";
            answer = "<span class=\"big\">Besparelse " + kroner(saving) +
                     "</span> <span class=\"crumb\">pr. år (" + formatValue(s.vars.at("E_spar"), "kWh") +
                     ")</span>";
            if (!(saving > 0)) {
                notes += "<div class=\"note\">Det nye bruger ikke mindre effekt end det gamle, så "
                         "udskiftningen sparer "
                         "ingenting på elregningen.</div>";
            } else if (in.has("Inv")) {
                s.vars["Inv"] = in.get("Inv");
                addStepBlock(
                    s, "Tilbagebetalingstid", "", {{"år", "Inv/B_aar", "T_tb"}},
                    hint("Så mange år går der, før besparelsen har betalt udskiftningen. Derefter er "
                         "besparelsen ren gevinst."));
                const double years = s.vars.at("T_tb");
                grid.push_back({"Tilbagebetalt efter", formatValue(years, "år"), true});
                if (years < 2) grid.push_back({"Det er", formatValue(years * 12, "måneder")});
                recent.push_back({"T_tb", years, "år"});
                answer +=
                    " <span class=\"big\">· tilbagebetalt efter " + formatValue(years, "år") + "</span>";
            }
        } else if (in.has("Inv")) {
            notes += "<div class=\"note\">Prisen for en udskiftning bruges først, når du også skriver den "
                     "nye effekt "
                     "P<sub>2</sub>.</div>";
        }

        s.sections.results = kvGrid(grid, 2) + notes;
        s.id = "energisheet";
        s.crumb = "Energi og pris · standardformler";
        s.title = title;
        s.sections.answer = answer;
        finish(out, s, recent);
    });
}

} // namespace fl
