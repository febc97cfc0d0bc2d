// Renders the figures to PNG for a person to look at: schematics, phasors,
// triangles and every formula figure (as a solve leaves it, and with nothing
// known), each with its caption, in light and dark; and worked sheets with
// their figures in the sheet view at text sizes 1.0 and 1.3. Also writes
// contact sheets of nine pictures each. Run by scripts/look_figures.sh.
//   figure_gallery OUTDIR
#include "app/pages/circuit/circuiteditor.h"
#include "app/sheet/sheetview.h"
#include "app/shell/theme.h"
#include "fl/circuit/forward.h"
#include "fl/expr/markup.h"
#include "fl/expr/numbers.h"
#include "fl/fig/formulafig.h"
#include "fl/fig/phasor.h"
#include "fl/fig/schematic.h"
#include "fl/fig/triangles.h"
#include "fl/formulas/catalogue.h"
#include "fl/formulas/solve.h"
#include "fl/tools/machinefigs.h"
#include "tests/fl/formulas/sample_values.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QSvgRenderer>
#include <QTextDocument>

#include <cmath>
#include <cstdio>
#include <functional>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

struct Item {
    std::string name;
    std::function<fl::FigureOut()> fig;
};

fl::CNodePtr leaf(const std::string& k, const std::string& v = {}, const std::string& r = {}) {
    fl::CNodePtr n = fl::makeNode(k);
    n->v = v;
    n->r = r;
    return n;
}

fl::CNodePtr group(const std::string& k, std::vector<fl::CNodePtr> ch) {
    fl::CNodePtr g = fl::makeNode(k);
    g->ch = std::move(ch);
    return g;
}

fl::Circuit circuit(const std::string& mode, std::vector<fl::CNodePtr> ch, std::map<std::string, std::string> src) {
    fl::Circuit c = fl::defaultCircuit(mode);
    c.root->ch = std::move(ch);
    for (auto& [k, v] : src)
        c.src[k] = v;
    fl::nameCircuit(c);
    return c;
}

fl::FigureOut schematicFig(fl::Circuit c, const fl::Values& v, const fl::SchematicOptions& o) {
    double w = 0, h = 0;
    const std::string svg = fl::schematic(c, v, o, nullptr, &w, &h);
    const std::string head = fl::svgHead(static_cast<int>(std::ceil(w)), static_cast<int>(std::ceil(h)));
    return {svg.substr(head.size(), svg.size() - head.size() - 6), static_cast<int>(std::ceil(w)),
            static_cast<int>(std::ceil(h)), {}};
}

// A circuit solved forwards, its values beside it.
struct Solved {
    fl::CNodePtr root;
    fl::Values values;
};
Solved solved(std::vector<fl::CNodePtr> ch, const fl::Values& in) {
    fl::Circuit c = circuit("ac", std::move(ch), {});
    fl::Values v = fl::forward(c.root, in, true);
    for (const auto& [k, x] : in)
        v[k] = x;
    return {c.root, v};
}

std::vector<Item> circuitItems() {
    std::vector<Item> out;
    out.push_back({"schematic_dc_mixed", [] {
                       fl::Circuit c = circuit("dc",
                                               {leaf("R", "100"),
                                                group("P", {leaf("R", "220"), group("S", {leaf("R"), leaf("A")})}),
                                                leaf("V", "", "10k")},
                                               {{"U", "230"}});
                       fl::SchematicOptions o;
                       o.selection = c.root->ch[1]->ch[0]->id;
                       return schematicFig(c,
                                           {{"U", 230}, {"I", 1.25}, {"R3", 47}, {"U_R1", 125}, {"I_R1", 1.25},
                                            {"R_A", 84.0}, {"A1", 0.5}},
                                           o);
                   }});
    out.push_back({"schematic_ac", [] {
                       fl::Circuit c = circuit("ac",
                                               {leaf("R", "47"), leaf("L", "0,1", "5"),
                                                group("P", {leaf("C", "47u"), leaf("L", "=L1", "?")})},
                                               {{"U", "230"}});
                       fl::SchematicOptions o;
                       o.subject = c.root->ch[1]->id;
                       return schematicFig(
                           c, {{"U", 230}, {"I", 2.1}, {"U_R1", 98.7}, {"X_C1", 67.7}, {"Z_L1", 31.8}}, o);
                   }});
    out.push_back({"schematic_deep_ac", [] {
                       fl::Circuit c = circuit(
                           "ac",
                           {group("P", {group("S", {leaf("R", "10"), group("P", {leaf("C", "10u"), leaf("R", "1k")})}),
                                        leaf("L", "0,5")}),
                            leaf("R", "2,2k")},
                           {{"U", "400"}, {"f", "50"}});
                       return schematicFig(c, {}, {});
                   }});
    out.push_back({"schematic_empty", [] { return schematicFig(circuit("dc", {}, {}), {}, {}); }});

    static const Solved series = solved({leaf("R"), leaf("L"), leaf("C")},
                                        {{"U", 230}, {"f", 50}, {"R1", 40}, {"L1", 0.25}, {"C1", 47e-6}});
    static const Solved par = solved({group("P", {leaf("R"), leaf("L"), leaf("C")})},
                                     {{"U", 230}, {"f", 50}, {"R1", 100}, {"L1", 0.4}, {"C1", 10e-6}});
    static const Solved cap = solved({leaf("R"), leaf("C")}, {{"U", 230}, {"f", 50}, {"R1", 10}, {"C1", 47e-6}});
    out.push_back({"phasor_currents_par", [] { return fl::drawVectors(fl::currentScene(par.root, par.values, true)); }});
    out.push_back(
        {"phasor_voltages_series", [] { return fl::drawVectors(fl::voltageScene(series.root, series.values, true)); }});
    out.push_back({"phasor_voltages_cap", [] { return fl::drawVectors(fl::voltageScene(cap.root, cap.values, true)); }});
    static const Solved upright =
        solved({leaf("R"), leaf("L")}, {{"U", 230}, {"f", 50}, {"R1", 2}, {"L1", 0.5}});
    out.push_back(
        {"phasor_voltages_upright", [] { return fl::drawVectors(fl::voltageScene(upright.root, upright.values, true)); }});
    static const Solved four = solved({group("P", {leaf("R"), leaf("L"), leaf("C"), group("S", {leaf("R"), leaf("L")})})},
                                      {{"U", 400}, {"f", 50}, {"R1", 80}, {"L1", 0.3}, {"C1", 22e-6}, {"R2", 30},
                                       {"L2", 0.1}});
    out.push_back({"phasor_currents_four", [] { return fl::drawVectors(fl::currentScene(four.root, four.values, true)); }});
    // The vector sum as the small tools draw it.
    out.push_back({"phasor_vector_sum", [] {
                       fl::VectorScene sc;
                       const fl::Pt v[] = {{3, 4}, {-2, 5}, {6, -1}};
                       fl::Pt at{};
                       for (int k = 0; k < 3; ++k) {
                           sc.vectors.push_back({{0, 0}, v[k], "", "v<sub>" + std::to_string(k + 1) + "</sub>",
                                                 fl::fmtNumber(std::hypot(v[k].x, v[k].y))});
                           if (k > 0) sc.vectors.push_back({at, {at.x + v[k].x, at.y + v[k].y}, "", {}, {}, true});
                           at = {at.x + v[k].x, at.y + v[k].y};
                       }
                       sc.vectors.push_back({{0, 0}, at, "res", "v<sub>sum</sub>", fl::fmtNumber(std::hypot(at.x, at.y))});
                       return fl::drawVectors(sc);
                   }});
    for (const char* which : {"Z", "U", "I", "Ibook", "S"}) {
        const std::string w = which;
        out.push_back({"triangle_series_" + w, [w] { return fl::circuitTriangle(w, series.root, series.values); }});
        out.push_back({"triangle_cap_" + w, [w] { return fl::circuitTriangle(w, cap.root, cap.values); }});
    }
    // Small angles, where the angle's text has no room between the arms.
    for (double deg : {3.0, 10.0}) {
        const double x = 100 * std::tan(deg * M_PI / 180);
        const Solved s =
            solved({leaf("R"), leaf("L")}, {{"U", 230}, {"f", 50}, {"R1", 100}, {"L1", x / (100 * M_PI)}});
        out.push_back({"phasor_small_angle_" + std::to_string(static_cast<int>(deg)),
                       [s] { return fl::drawVectors(fl::voltageScene(s.root, s.values, true)); }});
    }
    // The compensation tool's triangle, with angles far apart and close together.
    for (auto [phi1, phi2] : {std::pair{45.573, 18.195}, std::pair{36.0, 31.0}, std::pair{25.8, 24.5}}) {
        const double p = 1000, q1 = p * std::tan(phi1 * M_PI / 180), q2 = p * std::tan(phi2 * M_PI / 180);
        out.push_back(
            {"tool_compensation_" + std::to_string(static_cast<int>(phi1)) + "_" +
                 std::to_string(static_cast<int>(phi2)),
             [=] {
                 return fl::compensationFigure(
                     {{{"P", p}, {"Q1", q1}, {"Q2", q2}, {"QC", q1 - q2}, {"phi1", phi1}, {"phi2", phi2}},
                      {"QC"}});
             }});
    }
    out.push_back({"bar_dc", [] {
                       fl::Circuit c = circuit("dc", {leaf("R"), leaf("R"), leaf("R"), leaf("R")}, {});
                       return fl::voltageBar(c.root, {{"U_R1", 120}, {"U_R2", 80}, {"U_R3", 2}, {"U_R4", 28}});
                   }});
    return out;
}

// Every family with a figure as a solve leaves it (believable values, the
// second quantity sought and found), and each key once with nothing known.
std::vector<Item> formulaItems() {
    std::vector<Item> out;
    std::mt19937 rng(11);
    std::set<std::string> bare;
    for (const fl::Formula& f : fl::catalogue()) {
        if (f.figure.empty()) continue;
        auto values = fl::sample::values(f, rng);
        if (!values) continue;
        const std::string target = f.forms.size() > 1 ? f.forms[1].var : f.forms[0].var;
        const std::map<std::string, double> v = *values;
        const std::string key = f.figure;
        out.push_back({"formula_" + f.key, [key, v, target] { return fl::formulaFigure(key, v, target); }});
        if (bare.insert(key).second)
            out.push_back({"bare_" + key, [key, target] { return fl::formulaFigure(key, {}, target); }});
    }
    // Long values, where labels are most likely to run into lines.
    out.push_back({"long_par2", [] {
                       return fl::formulaFigure("par2", {{"R1", 4700}, {"R2", 1234.5}, {"Rt", 977.7}}, "Rt");
                   }});
    out.push_back(
        {"long_par2_sought", [] {
             return fl::formulaFigure("par2", {{"R1", 12345.6}, {"R2", 0.89356}, {"Rt", 0.89350}}, "R1");
         }});
    out.push_back({"long_batt", [] {
                       return fl::formulaFigure(
                           "batt",
                           {{"E", 12.345}, {"RI", 0.12345}, {"Uy", 11.234}, {"Ry", 1234.5}, {"I", 0.0091}},
                           "Uy");
                   }});
    out.push_back({"long_trafo", [] {
                       return fl::formulaFigure(
                           "trafo", {{"U1", 0.029636}, {"U2", 3.923}, {"N1", 12345}, {"N2", 85.953}}, "U1");
                   }});
    out.push_back(
        {"close_komp", [] {
             return fl::formulaFigure("komp", {{"P", 1000}, {"cosphi1", 0.8}, {"cosphi2", 0.81}}, "QC");
         }});
    return out;
}

// The figure on the panel colour with its caption below, as a sheet shows it.
QImage render(const fl::FigureOut& fig, const QString& file) {
    const std::string svg = fl::svgDocument(fig);
    QSvgRenderer r(QByteArray::fromStdString(svg));
    if (!r.isValid()) std::fprintf(stderr, "invalid SVG: %s\n", qPrintable(file));
    const double dpr = 1.5;
    QTextDocument caption;
    caption.setDefaultFont(app::uiFont(9));
    caption.setTextWidth(fig.w);
    caption.setHtml("<div style=\"color:" + app::qstr(app::colors().muted) + "\">" +
                    QString::fromStdString(fig.caption) + "</div>");
    const double capH = fig.caption.empty() ? 0 : caption.size().height();
    QImage img(QSize(fig.w, static_cast<int>(fig.h + capH)) * dpr, QImage::Format_ARGB32);
    img.fill(app::qcolor(app::colors().panel));
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);
    p.scale(dpr, dpr);
    r.render(&p, QRectF(0, 0, fig.w, fig.h));
    p.translate(0, fig.h);
    caption.drawContents(&p);
    p.end();
    img.save(file);
    return img;
}

// A worked sheet in the sheet view as the formula page shows it.
QImage sheetShot(const std::string& key, const std::map<std::string, double>& values, const std::string& target,
                 const QString& file) {
    fl::resetFigures();
    const fl::Formula* f = fl::findFormula(key);
    const fl::SolveResult s = fl::solveSheet(*f, values, {}, target, fl::formulaFigureMarkup);
    app::SheetView view;
    view.resize(760, 600);
    view.setContent(fl::takeRender("<div class=\"card sheet\" id=\"" + key +
                                   "\"><div class=\"sheet-head\"><div class=\"crumb\">Formler</div><h2>" + f->title +
                                   "</h2></div>" + s.html + "</div>"));
    view.revealAll();
    view.show();
    QApplication::processEvents();
    view.fitHeight();
    QApplication::processEvents();
    QImage img = view.grab().toImage();
    img.save(file);
    return img;
}

// The circuit editor at `width` with the pointer over box `hover` (-1 none).
QImage editorShot(int width, int hover, const QString& file) {
    static fl::Circuit c = circuit(
        "ac", {leaf("R", "47"), group("P", {group("S", {leaf("L", "0,1"), leaf("C", "47u")}), leaf("R", "100")}), leaf("A")},
        {{"U", "230"}});
    c.sel = c.root->ch[0]->id;
    app::CircuitEditor editor;
    editor.setCircuit(&c);
    editor.resize(width, 400);
    editor.show();
    QApplication::processEvents();
    if (hover >= 0) {
        const fl::HitBox& b = editor.hitBoxes()[static_cast<size_t>(hover)];
        const QPointF at = editor.toWidget(b.group ? QPointF(b.x + 3, b.y + 3) : QPointF(b.x + b.w / 2, b.y + b.h / 2));
        QMouseEvent move(QEvent::MouseMove, at, editor.mapToGlobal(at), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&editor, &move);
    }
    editor.resize(width, editor.minimumHeight());
    QImage img = editor.grab().toImage();
    img.save(file);
    return img;
}

// All pictures of one run on pages of nine, three across, each with its name.
void contactSheets(const std::vector<std::pair<QString, QImage>>& shots, const QString& prefix) {
    const int cellW = 470, cellH = 360, across = 3, perPage = 9;
    for (size_t first = 0, page = 1; first < shots.size(); first += perPage, ++page) {
        const size_t n = std::min(shots.size() - first, static_cast<size_t>(perPage));
        const int rows = static_cast<int>((n + across - 1) / across);
        QImage sheet(cellW * across, cellH * rows, QImage::Format_ARGB32);
        sheet.fill(Qt::gray);
        QPainter p(&sheet);
        p.setRenderHint(QPainter::SmoothPixmapTransform);
        for (size_t k = 0; k < n; ++k) {
            const auto& [name, img] = shots[first + k];
            const int x = static_cast<int>(k % across) * cellW, y = static_cast<int>(k / across) * cellH;
            p.drawImage(x + 5, y + 20, img.scaled(cellW - 10, cellH - 26, Qt::KeepAspectRatio, Qt::SmoothTransformation));
            p.setPen(Qt::black);
            p.drawText(x + 6, y + 15, name);
        }
        p.end();
        sheet.save(prefix + QString::number(page) + ".png");
    }
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    app::installFontSubstitutions();
    const QString dir = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("gallery");
    QDir().mkpath(dir + "/figures");
    QDir().mkpath(dir + "/sheets");
    std::vector<Item> items = circuitItems();
    for (Item& it : formulaItems())
        items.push_back(std::move(it));

    for (int dark = 0; dark < 2; ++dark) {
        app::setThemeMode(dark ? app::ThemeDark : app::ThemeLight);
        const QString theme = dark ? "dark" : "light";
        std::vector<std::pair<QString, QImage>> shots;
        for (const Item& it : items) {
            const QString name = QString::fromStdString(it.name);
            shots.push_back({name, render(it.fig(), dir + "/figures/" + name + "_" + theme + ".png")});
        }
        contactSheets(shots, dir + "/contact_" + theme + "_");

        // Sheets with their figures at the normal and the largest text size.
        std::vector<std::pair<QString, QImage>> sheets;
        for (double scale : {1.0, 1.3}) {
            app::setTextScale(scale);
            app::applyTheme();
            const QString tag = theme + (scale > 1 ? "_130" : "_100");
            sheets.push_back({"ohm " + tag, sheetShot("ohm", {{"U", 230}, {"R", 47}}, "I",
                                                      dir + "/sheets/ohm_" + tag + ".png")});
            sheets.push_back({"ZRLC " + tag, sheetShot("ZRLC", {{"R", 30}, {"XL", 80}, {"XC", 40}}, "Z",
                                                       dir + "/sheets/zrlc_" + tag + ".png")});
            sheets.push_back({"sector " + tag, sheetShot("sector", {{"r", 2}, {"V", 75}}, "A",
                                                         dir + "/sheets/sector_" + tag + ".png")});
        }
        app::setTextScale(1.0);
        // The editor at its natural width and squeezed, with a component and a group under the pointer.
        sheets.push_back({"editor, component " + theme, editorShot(900, 2, dir + "/sheets/editor_" + theme + ".png")});
        sheets.push_back({"editor, narrow, group " + theme,
                          editorShot(420, 3, dir + "/sheets/editor_narrow_" + theme + ".png")});
        contactSheets(sheets, dir + "/sheets_" + theme + "_");
    }
    std::printf("%zu figures and 6 sheets per theme in %s\n", items.size(), qPrintable(dir));
    return 0;
}
