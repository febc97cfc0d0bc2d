// Screenshots of the formula road as a new student meets it, for a person to
// look at: the finder's cards and tiles, a formula page while typing, solved,
// refused and revealed step by step, the home page and its chips, the
// sidebar after choosing an entry near its end, the settings panel after a
// change of text size, the PDF save dialog and the PDF itself (written beside
// the pictures for scripts/look_pages.sh to turn into one), the machine tools'
// live figures and sheets; each in light and dark, at text size 1.0 and 1.3,
// in a 1280×800 window. The whole screen is grabbed, so popups and dialogs
// are in the picture: run it under Xvfb, as scripts/look_pages.sh does. Window titles go to titles.txt.
//   page_shots OUTDIR [SCENE...]
#include "app/pages/formulas/finderpage.h"
#include "app/pages/formulas/formulapage.h"
#include "app/pages/tools/toolpage.h"
#include "app/sheet/resultarea.h"
#include "app/shell/mainwindow.h"
#include "app/shell/options.h"
#include "app/shell/settingspanel.h"
#include "app/shell/theme.h"
#include "app/widgets/valuefield.h"
#include "scripts/gallery/shots.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTextStream>
#include <QTimer>

#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

namespace {

using shots::grabScreen;
using shots::settle;

app::FormulaPage* formulaPage(app::MainWindow& w, const QString& key) {
    w.navigate(key);
    return dynamic_cast<app::FormulaPage*>(w.currentPage());
}

void type(app::FormulaPage* page, const QString& symbol, const QString& text) {
    app::ValueField* f = page->field(symbol);
    if (!f) return;
    f->edit->setFocus();
    f->edit->clear();
    QTest::keyClicks(f->edit, text);
}

void enter(app::FormulaPage* page) {
    QTest::keyClick(page->fields().front()->edit, Qt::Key_Return);
}

void finder(app::MainWindow& w, const char* route, const char* path) {
    w.navigate(QString::fromLatin1(route));
    if (auto* f = dynamic_cast<app::FinderPage*>(w.currentPage())) f->setPath(path);
}

// Two earlier answers in the strip, as after a while of work.
void earlierResults(app::MainWindow& w) {
    if (app::FormulaPage* p = formulaPage(w, QStringLiteral("XC"))) {
        type(p, QStringLiteral("f"), QStringLiteral("50"));
        type(p, QStringLiteral("C"), QStringLiteral("10u"));
        enter(p);
    }
    if (app::FormulaPage* p = formulaPage(w, QStringLiteral("tfUY"))) {
        type(p, QStringLiteral("U_N"), QStringLiteral("400"));
        enter(p);
    }
}

app::FormulaPage* solvedPower(app::MainWindow& w) {
    app::FormulaPage* p = formulaPage(w, QStringLiteral("tfP"));
    if (!p) return nullptr;
    type(p, QStringLiteral("U_N"), QStringLiteral("400"));
    type(p, QStringLiteral("I_N"), QStringLiteral("16"));
    type(p, QStringLiteral("cosphi"), QStringLiteral("0,85"));
    enter(p);
    return p;
}

// Grabs the screen once the modal dialog that `open` shows is up, then closes it.
QPixmap grabDialog(QWidget* window, const std::function<void()>& open) {
    QPixmap shot;
    QTimer::singleShot(700, window, [&shot, window] {
        shot = grabScreen(window);
        if (QWidget* modal = QApplication::activeModalWidget()) modal->close();
    });
    open();
    return shot;
}

app::ToolPage* toolPage(app::MainWindow& w, const char* route,
                        std::initializer_list<std::pair<const char*, const char*>> typed) {
    w.navigate(QString::fromLatin1(route));
    auto* page = dynamic_cast<app::ToolPage*>(w.currentPage());
    if (!page) return nullptr;
    for (const auto& [key, text] : typed)
        if (app::ValueField* f = page->field(QString::fromLatin1(key))) {
            f->edit->setFocus();
            f->edit->clear();
            QTest::keyClicks(f->edit, QString::fromUtf8(text));
        }
    return page;
}

void toolEnter(app::ToolPage* page, const char* key) {
    if (page) QTest::keyClick(page->field(QString::fromLatin1(key))->edit, Qt::Key_Return);
}

// The picture being taken, without ".png": a scene that writes a file of its
// own names it after the picture.
QString shotBase;

void scrollToEnd(QAbstractScrollArea* area) {
    settle(200);
    area->verticalScrollBar()->setValue(area->verticalScrollBar()->maximum());
}

struct Scene {
    const char* name;
    // Brings the window to what is to be seen; may grab itself (dialogs).
    std::function<QPixmap(app::MainWindow&)> run;
};

const std::vector<Scene>& scenes() {
    static const std::vector<Scene> list = {
        {"finder-root", [](app::MainWindow& w) { finder(w, "finder", ""); return QPixmap(); }},
        {"finder-tf-effekt", [](app::MainWindow& w) { finder(w, "finder", "tf/effekt"); return QPixmap(); }},
        {"finder-ac-effekt", [](app::MainWindow& w) { finder(w, "finder", "ac/effekt"); return QPixmap(); }},
        {"udregnere-root", [](app::MainWindow& w) { finder(w, "udregnere", ""); return QPixmap(); }},
        {"udregnere-tf-effekt", [](app::MainWindow& w) { finder(w, "udregnere", "tf/effekt"); return QPixmap(); }},
        {"home", [](app::MainWindow& w) { w.navigate(QStringLiteral("hjem")); return QPixmap(); }},
        {"home-chips",
         [](app::MainWindow& w) {
             w.navigate(QStringLiteral("hjem"));
             if (auto* page = dynamic_cast<QAbstractScrollArea*>(w.currentPage())) scrollToEnd(page);
             return QPixmap();
         }},
        {"sidebar-end", [](app::MainWindow& w) { w.navigate(QStringLiteral("vec")); return QPixmap(); }},
        {"formula-tfUY", [](app::MainWindow& w) { formulaPage(w, QStringLiteral("tfUY")); return QPixmap(); }},
        {"formula-typing",
         [](app::MainWindow& w) {
             if (app::FormulaPage* p = formulaPage(w, QStringLiteral("tfP"))) {
                 type(p, QStringLiteral("U_N"), QStringLiteral("400"));
                 type(p, QStringLiteral("I_N"), QStringLiteral("1"));
             }
             return QPixmap();
         }},
        {"formula-solved",
         [](app::MainWindow& w) {
             earlierResults(w);
             solvedPower(w);
             return QPixmap();
         }},
        {"formula-unreadable",
         [](app::MainWindow& w) {
             if (app::FormulaPage* p = formulaPage(w, QStringLiteral("tfP"))) {
                 type(p, QStringLiteral("U_N"), QStringLiteral("1,2,3"));
                 type(p, QStringLiteral("I_N"), QStringLiteral("1e999"));
                 type(p, QStringLiteral("cosphi"), QStringLiteral("abc"));
                 enter(p);
                 scrollToEnd(p);
             }
             return QPixmap();
         }},
        {"formula-steps",
         [](app::MainWindow& w) {
             app::options().trinvis = true;
             emit w.hostSignals()->stepModeChanged(true);
             app::FormulaPage* p = solvedPower(w);
             if (p) {
                 settle(200);
                 // Where a student has scrolled to reach the button.
                 p->ensureWidgetVisible(p->resultArea()->sheetBox()->nextButton(), 0, 24);
                 settle(200);
                 for (int i = 0; i < 2; ++i) {
                     QTest::mouseClick(p->resultArea()->sheetBox()->nextButton(), Qt::LeftButton);
                     settle(300);
                 }
             }
             return QPixmap();
         }},
        {"settings-after-size",
         [](app::MainWindow& w) {
             formulaPage(w, QStringLiteral("tfUY"));
             w.showSettings();
             settle(200);
             // The longest choice showing, where a panel too narrow for it clips it.
             QComboBox* rounding = w.settingsPanel()->findChildren<QComboBox*>().front();
             rounding->setCurrentIndex(1);
             emit rounding->activated(1);
             QComboBox* size = w.settingsPanel()->findChildren<QComboBox*>().back();
             // From the other end, so the change really happens at either scale.
             const int to = app::textScale() > 1.2 ? 0 : 2;
             size->setCurrentIndex(to);
             emit size->activated(to);
             settle();
             return grabScreen(&w);
         }},
        {"pdf-dialog",
         [](app::MainWindow& w) {
             app::FormulaPage* p = solvedPower(w);
             settle(200);
             return grabDialog(&w, [p] { p->resultArea()->savePdf(); });
         }},
        {"pdf-file",
         [](app::MainWindow& w) {
             if (app::FormulaPage* p = solvedPower(w)) p->resultArea()->savePdfTo(shotBase + QStringLiteral(".pdf"));
             return QPixmap();
         }},
        // The machine tools: a live figure while typing, and a solved sheet.
        {"motor-typing",
         [](app::MainWindow& w) {
             toolPage(w, "motor", {{"P_2", "5,5k"}, {"I_N", "11"}, {"cosphi", "0,8"}});
             return QPixmap();
         }},
        {"motor-solved",
         [](app::MainWindow& w) {
             if (app::ToolPage* p = toolPage(w, "motor", {})) p->thirdAction();
             return QPixmap();
         }},
        {"trafo-typing",
         [](app::MainWindow& w) {
             toolPage(w, "trafo", {{"U_P", "230"}, {"U_S", "12"}});
             return QPixmap();
         }},
        {"trafo-solved",
         [](app::MainWindow& w) {
             toolEnter(toolPage(w, "trafo", {{"U_P", "230"}, {"U_S", "12"}, {"S", "60"}}), "S");
             return QPixmap();
         }},
        {"trefase-typing",
         [](app::MainWindow& w) {
             toolPage(w, "trefase", {{"R", "20"}, {"cosphi", "0,8"}});
             return QPixmap();
         }},
        {"trefase-solved",
         [](app::MainWindow& w) {
             toolEnter(toolPage(w, "trefase", {{"R", "20"}}), "R");
             return QPixmap();
         }},
        {"komp-solved",
         [](app::MainWindow& w) {
             toolEnter(toolPage(w, "komp", {{"P", "1000"}, {"cosphi1", "0,7"}, {"U", "230"}}), "P");
             return QPixmap();
         }},
        {"message-box",
         [](app::MainWindow& w) {
             return grabDialog(&w, [&w] {
                 QMessageBox::question(&w, QStringLiteral("Ostrovalden Skole"),
                                       QStringLiteral("Standardknapperne i en beskedboks:"),
                                       QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
             });
         }},
    };
    return list;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: page_shots OUTDIR [SCENE...]\n");
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

    QFile titles(QDir(out).filePath("titles.txt"));
    titles.open(QIODevice::WriteOnly | QIODevice::Truncate);
    QTextStream titleOut(&titles);

    QTemporaryDir dir;
    for (const Scene& scene : scenes()) {
        if (!wanted.isEmpty() && !wanted.contains(QLatin1String(scene.name))) continue;
        for (const bool dark : {false, true})
            for (const double scale : {1.0, 1.3}) {
                const QString name = QStringLiteral("%1_%2_%3")
                                         .arg(QLatin1String(scene.name), dark ? "dark" : "light",
                                              scale > 1.0 ? "130" : "100");
                shotBase = QDir(out).filePath(name);
                auto window = shots::freshWindow(dir.path() + "/data.json", dark, scale);
                QPixmap shot = scene.run(*window);
                settle();
                if (shot.isNull()) shot = grabScreen(window.get());
                shot.save(shotBase + QStringLiteral(".png"));
                titleOut << name << ".png\t" << window->windowTitle() << "\n";
            }
    }
    app::setTextScale(1.0);
    return 0;
}
