// Screenshots of the circuit page with a solved circuit, for a person to look
// at: the drawing and parts table, the top of the sheet, its middle and its
// end (results, check and graphics), on the routes "kreds", "kredsac",
// "kredsguide" and "kredsguideac", and the task sheet, each in light and
// dark, in a 1280×800 window under Xvfb
// (scripts/look_circuit.sh).
//   circuit_shots OUTDIR [SCENE...]
#include "app/pages/circuit/kredspage.h"
#include "app/sheet/resultarea.h"
#include "app/shell/mainwindow.h"
#include "app/shell/theme.h"
#include "fl/circuit/model.h"
#include "scripts/gallery/shots.h"

#include <QApplication>
#include <QDir>
#include <QPushButton>
#include <QScrollBar>
#include <QTemporaryDir>

#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

namespace {

using shots::settle;

// The task of the issue in dc: R1 in series with R2 ∥ R3, a current given.
fl::Circuit dcTask() {
    fl::Circuit c = fl::defaultCircuit("dc");
    c.root->ch = {fl::makeNode("R", "100"),
                  fl::makeNode("P", "", {fl::makeNode("R", "220"), fl::makeNode("R", "")})};
    c.root->ch[1]->ch[1]->I = "0,5";
    c.src["U"] = "230";
    return c;
}

// A mixed ac circuit: a resistor before a coil with its own resistance
// beside a capacitor.
fl::Circuit acTask() {
    fl::Circuit c = fl::defaultCircuit("ac");
    c.root->ch = {fl::makeNode("R", "47"),
                  fl::makeNode("P", "", {fl::makeNode("L", "0,2"), fl::makeNode("C", "22u")})};
    c.root->ch[1]->ch[0]->r = "12";
    c.src["U"] = "230";
    c.src["f"] = "50";
    return c;
}

// Where the page stands when the picture is taken.
enum class Place { Top, Sheet, Middle, End };

QPixmap solved(app::MainWindow& w, const char* route, const fl::Circuit& c, Place place, bool task = false) {
    w.navigate(QString::fromLatin1(route));
    auto* page = dynamic_cast<app::KredsPage*>(w.currentPage());
    if (!page) return QPixmap();
    page->installCircuit(c);
    if (task)
        page->button(QStringLiteral("Opgaveark"))->click();
    else
        page->computeNow();
    page->resultArea()->view()->finishLoading();
    settle(250);
    const int sheetTop = page->resultArea()->mapTo(page->widget(), QPoint(0, 0)).y();
    QScrollBar* bar = page->verticalScrollBar();
    switch (place) {
    case Place::Top:
        bar->setValue(0);
        break;
    case Place::Sheet:
        bar->setValue(sheetTop);
        break;
    case Place::Middle:
        bar->setValue(sheetTop + page->resultArea()->height() / 2);
        break;
    case Place::End:
        bar->setValue(bar->maximum());
        break;
    }
    return QPixmap();
}

struct Scene {
    const char* name;
    std::function<QPixmap(app::MainWindow&)> run;
};

const std::vector<Scene>& scenes() {
    static const std::vector<Scene> list = {
        {"kreds-top", [](app::MainWindow& w) { return solved(w, "kreds", dcTask(), Place::Top); }},
        {"kreds-sheet", [](app::MainWindow& w) { return solved(w, "kreds", dcTask(), Place::Sheet); }},
        {"kreds-end", [](app::MainWindow& w) { return solved(w, "kreds", dcTask(), Place::End); }},
        {"kredsac-top", [](app::MainWindow& w) { return solved(w, "kredsac", acTask(), Place::Top); }},
        {"kredsac-sheet", [](app::MainWindow& w) { return solved(w, "kredsac", acTask(), Place::Sheet); }},
        {"kredsac-middle", [](app::MainWindow& w) { return solved(w, "kredsac", acTask(), Place::Middle); }},
        {"kredsac-end", [](app::MainWindow& w) { return solved(w, "kredsac", acTask(), Place::End); }},
        {"kredsguide-sheet", [](app::MainWindow& w) { return solved(w, "kredsguide", dcTask(), Place::Sheet); }},
        {"kreds-task", [](app::MainWindow& w) { return solved(w, "kreds", dcTask(), Place::Sheet, true); }},
        {"kredsac-task", [](app::MainWindow& w) { return solved(w, "kredsac", acTask(), Place::Sheet, true); }},
        {"kredsguideac-sheet",
         [](app::MainWindow& w) { return solved(w, "kredsguideac", acTask(), Place::Sheet); }},
        {"kredsguideac-middle",
         [](app::MainWindow& w) { return solved(w, "kredsguideac", acTask(), Place::Middle); }},
    };
    return list;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: circuit_shots OUTDIR [SCENE...]\n");
        return 2;
    }
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QApplication application(argc, argv);
    QApplication::setApplicationName("Ostrovalden Skole");
    app::installLook();

    const QString out = QString::fromLocal8Bit(argv[1]);
    QDir().mkpath(out);
    QStringList wanted;
    for (int i = 2; i < argc; ++i)
        wanted << QString::fromLocal8Bit(argv[i]);

    QTemporaryDir dir;
    for (const Scene& scene : scenes()) {
        if (!wanted.isEmpty() && !wanted.contains(QLatin1String(scene.name))) continue;
        for (const bool dark : {false, true}) {
            auto window = shots::freshWindow(dir.path() + "/data.json", dark);
            QPixmap shot = scene.run(*window);
            settle();
            if (shot.isNull()) shot = shots::grabScreen(window.get());
            shot.save(QDir(out).filePath(QStringLiteral("%1_%2.png").arg(QLatin1String(scene.name),
                                                                          dark ? "dark" : "light")));
        }
    }
    return 0;
}
