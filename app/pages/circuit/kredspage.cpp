// The circuit page: widgets around the working circuit. Everything the page
// shows of a solution comes from fl/circuit (computeSheet and the sheets);
// the page reads fields into the model, calls, and shows.
#include "app/pages/circuit/kredspage.h"

#include "app/pages/circuit/circuiteditor.h"
#include "app/pages/circuit/sourcekeys.h"
#include "app/sheet/resultarea.h"
#include "app/sheet/sheetview.h"
#include "app/shell/locks.h"
#include "app/shell/pagehost.h"
#include "app/shell/theme.h"
#include "app/shell/visits.h"
#include "app/widgets/flowlayout.h"
#include "app/widgets/helpers.h"
#include "app/widgets/valuefield.h"
#include "fl/circuit/analysis.h"
#include "fl/circuit/json.h"
#include "fl/circuit/sheets/walkthrough.h"
#include "fl/expr/markup.h"
#include "fl/expr/numbers.h"
#include "fl/expr/symbols.h"
#include "fl/formulas/fields.h"
#include "store/datastore.h"
#include "store/keys.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>

#include <stdexcept>

namespace app {

namespace {

const char kWorking[] = "Regner…";
// The parts table makes a row of widgets per node; beyond this a pasted or
// stored tree would take seconds to lay out and is no circuit of a lesson.
constexpr size_t kMaxTableNodes = 120;

// Text a field may hold: empty, a link ("=R1"), "?" where an unknown is
// allowed, or anything the number reader takes.
bool readable(const std::string& text, bool questionMark) {
    const std::string t = fl::trimmed(text);
    if (t.empty() || !fl::valueLink(t).empty()) return true;
    if (questionMark && t == "?") return true;
    return !std::isnan(fl::readValue(t));
}

std::string* memberOf(fl::CNode& node, const std::string& column) {
    if (column == "v") return &node.v;
    if (column == "r") return &node.r;
    if (column == "R") return &node.R;
    if (column == "U") return &node.U;
    if (column == "I") return &node.I;
    if (column == "P") return &node.P;
    return nullptr;
}

bool isMeter(const fl::CNode& n) {
    return n.k == "A" || n.k == "V";
}

QString lockMessage(bool wantAc) {
    return QStringLiteral("Det er et ") +
           (wantAc ? QStringLiteral("vekselstrøms") : QStringLiteral("jævnstrøms")) +
           QStringLiteral("kredsløb, og din lærer har slået ") +
           (wantAc ? QStringLiteral("vekselstrøm") : QStringLiteral("jævnstrøm")) + QStringLiteral(" fra.");
}

QString routeOf(bool guide, bool ac) {
    return QString::fromLatin1(guide ? "kredsguide" : "kreds") + (ac ? QStringLiteral("ac") : QString());
}

fl::Circuit snapshot(const fl::Circuit& c) {
    fl::Circuit copy = c;
    copy.root = fl::deepCopy(c.root);
    copy.solving = false;
    return copy;
}

// A provider's last guard: a sheet that throws while it is drawn again (a
// theme change) shows the page's sentence instead of leaving the window.
fl::RenderResult guarded(const std::function<std::string()>& write) {
    try {
        return fl::takeRender(write());
    } catch (const std::runtime_error&) {
        return fl::takeRender(fl::msgBox("Udregningen gik i stå – tjek værdierne.", true));
    } catch (...) {
        return fl::takeRender(fl::msgBox("Noget passer ikke – tjek værdierne.", true));
    }
}

} // namespace

KredsPage::KredsPage(bool g, bool a, PageHost* h, QWidget* parent) : Page(parent), host(h), guide(g), ac(a) {
    askText = [this](const QString& title, const QString& label, QString* text) {
        bool ok = false;
        const QString answer = QInputDialog::getText(this, title, label, QLineEdit::Normal, *text, &ok);
        if (ok) *text = answer;
        return ok;
    };
    confirm = [this](const QString& title, const QString& question) {
        return QMessageBox::question(this, title, question, QMessageBox::Yes | QMessageBox::No,
                                     QMessageBox::No) == QMessageBox::Yes;
    };
    inform = [this](const QString& title, const QString& text) { QMessageBox::warning(this, title, text); };

    Card* top = addCard();
    top->addLabel(QString::fromUtf8(guide ? "Kredsløb – fremgangsmåde" : "Tegn et kredsløb") +
                      (ac ? QStringLiteral(", vekselstrøm") : QStringLiteral(", jævnstrøm")),
                  QStringLiteral("crumb"));
    static const char* const kTitles[2][2] = {
        {"Kredsløb – jævnstrøm", "Kredsløb – vekselstrøm"},
        {"Kredsløb – fremgangsmåde, jævnstrøm", "Kredsløb – fremgangsmåde, vekselstrøm"}};
    heading = top->addLabel(QString::fromUtf8(kTitles[guide][ac]), QStringLiteral("h2"));
    top->addLabel(
        guide ? QStringLiteral("Tegn kredsløbet og skriv de værdier, du kender, præcis som i \"Tegn et "
                               "kredsløb\". Tryk <b>Vis fremgangsmåden</b>, så får du ikke tallene, men de "
                               "formler, du skal bruge, i den rigtige rækkefølge – med forklaring af hvorfor "
                               "og hvordan. Så kan du regne opgaven selv.")
              : QStringLiteral("Klik på en komponent for at vælge den, og byg videre med knapperne under "
                               "tegningen. Udfyld de værdier, du kender, og lad resten stå tomme. Tryk "
                               "<b>Beregn</b>, så finder programmet selv de formler, der skal bruges, og "
                               "laver et regneark med alle udregninger og tegninger."),
        QStringLiteral("hint"));
    QHBoxLayout* modes = top->addButtonRow();
    dcBtn = top->addButton(modes, QStringLiteral("Jævnstrøm (DC)"), QStringLiteral("tab"));
    acBtn = top->addButton(modes, QStringLiteral("Vekselstrøm (AC)"), QStringLiteral("tab"));
    dcBtn->setProperty("data", QStringLiteral("dc"));
    acBtn->setProperty("data", QStringLiteral("ac"));
    dcBtn->setProperty("on", !ac);
    acBtn->setProperty("on", ac);
    connect(dcBtn, &QPushButton::clicked, this, [this] { switchTo(false); });
    connect(acBtn, &QPushButton::clicked, this, [this] { switchTo(true); });

    buildEditorCard();
    buildSourceCard();
    buildPartsCard();
    buildActions();
    render();
    refreshSaved();
}

QString KredsPage::route() const {
    return routeOf(guide, ac);
}
QString KredsPage::siblingRoute() const {
    return routeOf(guide, !ac);
}

fl::Circuit& KredsPage::circuit() {
    // The pages of both currents share the one working circuit; each
    // switches it to its own kind before touching it.
    const std::string mode = ac ? "ac" : "dc";
    if (fl::currentCircuit().mode != mode) fl::switchMode(mode);
    return fl::currentCircuit();
}

void KredsPage::buildEditorCard() {
    Card* card = addCard();
    card->addTitle(QStringLiteral("Tegningen"));
    auto* row = new QHBoxLayout;
    row->setSpacing(12);
    drawing = new CircuitEditor(card);
    row->addWidget(drawing, 1);
    auto* side = new QVBoxLayout;
    side->setSpacing(6);
    QPushButton* all = makeButton(QStringLiteral("Vælg hele kredsen"), card);
    QPushButton* anew = makeButton(QStringLiteral("Start forfra"), card);
    side->addWidget(all);
    side->addWidget(anew);
    side->addStretch(1);
    row->addLayout(side);
    card->layout->addLayout(row);
    connect(drawing, &CircuitEditor::selected, this, [this](const QString& id) { select(id); });
    connect(all, &QPushButton::clicked, this, [this] { select(QStringLiteral("root")); });
    connect(anew, &QPushButton::clicked, this, [this] {
        if (!confirm(QStringLiteral("Start forfra"),
                     QStringLiteral("Vil du slette tegningen og starte forfra?")))
            return;
        fl::setCircuit(fl::defaultCircuit(ac ? "ac" : "dc"));
        fl::saveCircuit();
        area->clear();
        resultHeading->hide();
        render();
    });

    emptyLabel =
        card->addLabel(QStringLiteral("Kredsen er tom. Tryk \"Vælg hele kredsen\" og tilføj en komponent."),
                       QStringLiteral("hint"));
    selLabel = card->addLabel(QString());
    buttonBox = new QWidget(card);
    buttonFlow = new FlowLayout(buttonBox);
    buttonFlow->setContentsMargins(0, 0, 0, 0);
    card->layout->addWidget(buttonBox);

    buildSavedRow(card);
}

void KredsPage::buildSourceCard() {
    sourceCard = addCard();
    sourceCard->addTitle(QStringLiteral("Kilden og hele kredsen"));
    for (const SourceKey& s : sourceKeys(ac)) {
        ValueField* f = sourceCard->addField(QString::fromLatin1(s.key), QString::fromUtf8(s.label),
                                             QString::fromUtf8(s.unit));
        f->symbol->setText(QString::fromStdString(fl::symbolDisplay(s.symbol)));
        const std::string key = s.key;
        sourceFields[key] = f;
        connect(f, &ValueField::changed, this, [this, f, key] {
            if (filling) return;
            const std::string text = f->text().toStdString();
            circuit().src[key] = text;
            f->setInvalid(!readable(text, false));
            f->setInterp(QString::fromStdString(fl::interpretLine(text, colors().bad)));
            fl::saveCircuit();
            // The drawing shows the source's voltage and frequency.
            drawing->refresh();
        });
        connect(f, &ValueField::enterPressed, this, &KredsPage::compute);
    }
}

void KredsPage::buildPartsCard() {
    partsCard = addCard();
    partsCard->addTitle(QStringLiteral("Komponenter og grupper"));
    partsCard->addLabel(
        (ac ? QStringLiteral("Værdien er modstanden (Ω), induktansen (H) eller kapaciteten (F).")
            : QStringLiteral("Værdien er modstanden (Ω).")) +
            QStringLiteral(
                " U, I og P er kun til, hvis opgaven fortæller dig dem. Lad felter stå tomme, hvis du ikke "
                "kender dem. Er to komponenter ens (fx \"R₁ = R₂\"), så skriv <b>=R1</b> i feltet for R₂. "
                "Programmet skal have lige så mange kendte værdier, som der er ukendte."),
        QStringLiteral("hint"));
    tableBox = new QWidget(partsCard);
    partsCard->layout->addWidget(tableBox);
    partsNotes = partsCard->addLabel(QString(), QStringLiteral("hint"));
}

void KredsPage::buildActions() {
    QHBoxLayout* row = partsCard->addButtonRow();
    runText = guide ? QStringLiteral("Vis fremgangsmåden") : QStringLiteral("Beregn");
    runBtn = partsCard->addButton(row, runText, QStringLiteral("primary"));
    QPushButton* task = partsCard->addButton(row, QStringLiteral("Opgaveark"));
    task->setToolTip(QStringLiteral("Tegningen og de opgivne værdier som opgave uden udregning – hent som "
                                    "PDF, og giv den til en kammerat"));
    QPushButton* copy = partsCard->addButton(row, QStringLiteral("Kopiér kredsløb"));
    copy->setToolTip(
        QStringLiteral("Kopierer kredsløbet som tekst – til lærersiden (Opgaver til klassen) eller til en "
                       "kammerat, der sætter det ind med \"Indsæt kredsløb\""));
    QPushButton* paste = partsCard->addButton(row, QStringLiteral("Indsæt kredsløb"));
    paste->setToolTip(QStringLiteral(
        "Sætter et kredsløb ind, som er kopieret med \"Kopiér kredsløb\" – erstatter tegningen"));
    connect(runBtn, &QPushButton::clicked, this, &KredsPage::compute);
    connect(task, &QPushButton::clicked, this, &KredsPage::showTask);
    connect(copy, &QPushButton::clicked, this, &KredsPage::copyCircuit);
    connect(paste, &QPushButton::clicked, this, &KredsPage::pasteCircuit);

    resultHeading = new QLabel(guide ? QStringLiteral("Fremgangsmåde") : QStringLiteral("Kredsløb"));
    resultHeading->setProperty("class", "sh");
    resultHeading->hide();
    area = new ResultArea(host);
    auto* box = new QWidget;
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    column->addWidget(resultHeading);
    column->addWidget(area, 1);
    addWidget(box);
    layout->setStretchFactor(box, 1);
    connect(area->view(), &SheetView::action, this, &KredsPage::handleLink);
}

void KredsPage::render() {
    fl::Circuit& c = circuit();
    fl::nameCircuit(c);
    drawing->refresh();
    emptyLabel->setVisible(c.root->ch.empty());
    renderButtons();
    filling = true;
    for (const auto& [key, f] : sourceFields) {
        const QString text = QString::fromStdString(c.src[key]);
        if (f->text() != text) f->setText(text);
        f->setInvalid(!readable(c.src[key], false));
        f->setInterp(QString::fromStdString(fl::interpretLine(c.src[key], colors().bad)));
    }
    filling = false;
    renderTable();
}

void KredsPage::renderButtons() {
    // Later, not now: the button that asked for this render may still be
    // inside its clicked signal.
    while (QLayoutItem* item = buttonFlow->takeAt(0)) {
        if (QWidget* w = item->widget()) {
            w->setProperty("stale", true);
            w->hide();
            w->deleteLater();
        }
        delete item;
    }
    fl::Circuit& c = circuit();
    fl::CNodePtr node, parent;
    const bool chosen = !c.sel.empty() && fl::find(c.root, c.sel, &node, &parent);
    if (!chosen) {
        selLabel->setText(QStringLiteral("Klik på en komponent i tegningen for at vælge den."));
        buttonBox->hide();
        return;
    }
    const bool isRoot = node == c.root;
    QString what;
    if (isRoot)
        what = QStringLiteral("hele kredsen");
    else if (node->group)
        what = (node->k == "P" ? QStringLiteral("parallelgruppe ") : QStringLiteral("seriegruppe ")) +
               QString::fromStdString(node->name);
    else
        what = QString::fromStdString(node->name + " (" + fl::kindWord(node->k) + ")");
    selLabel->setText(QStringLiteral("Valgt: <b>") + what + QStringLiteral("</b>"));

    auto add = [this](const QString& text, const QString& tip, const std::string& op, const std::string& kind,
                      const QString& cls = QString()) {
        QPushButton* b = makeButton(text, buttonBox, cls);
        if (!tip.isEmpty()) b->setToolTip(tip);
        connect(b, &QPushButton::clicked, this, [this, op, kind] { applyEdit(op, kind); });
        buttonFlow->addWidget(b);
    };
    const std::vector<std::string> kinds =
        ac ? std::vector<std::string>{"R", "L", "C"} : std::vector<std::string>{"R"};
    const bool parallelToo = !(isRoot && node->ch.empty());
    for (const std::string& k : kinds)
        add(QStringLiteral("+ ") + QString::fromStdString(fl::kindWord(k)) + QStringLiteral(" i serie"), {},
            "ser", k);
    if (parallelToo)
        for (const std::string& k : kinds)
            add(QStringLiteral("+ ") + QString::fromStdString(fl::kindWord(k)) + QStringLiteral(" parallelt"),
                {}, "par", k);
    add(QStringLiteral("+ Amperemeter i serie"), QStringLiteral("Måler strømmen – sættes i serie"), "ser",
        "A");
    if (parallelToo)
        add(QStringLiteral("+ Voltmeter parallelt"), QStringLiteral("Måler spændingen – sættes parallelt"),
            "par", "V");
    if (!isRoot) add(QStringLiteral("Vælg gruppen udenom"), {}, "up", "");
    add(QStringLiteral("Slet"), {}, "del", "", QStringLiteral("danger"));
    buttonBox->show();
}

void KredsPage::renderTable() {
    partEdits.clear();
    // A fresh box in place of the old one, which goes later: a name in it may
    // be the button whose click asked for this render.
    auto* fresh = new QWidget(partsCard);
    delete partsCard->layout->replaceWidget(tableBox, fresh);
    tableBox->setProperty("stale", true);
    tableBox->hide();
    tableBox->deleteLater();
    tableBox = fresh;
    table = new QGridLayout(tableBox);
    table->setContentsMargins(0, 4, 0, 4);
    table->setHorizontalSpacing(8);
    table->setVerticalSpacing(4);

    fl::Circuit& c = circuit();
    std::vector<fl::CNodePtr> nodes;
    fl::walk(c.root, [&](const fl::CNodePtr& n) {
        if (n != c.root) nodes.push_back(n);
    });
    bool meters = false, coils = false;
    for (const fl::CNodePtr& n : nodes) {
        meters = meters || isMeter(*n);
        coils = coils || (ac && n->k == "L");
    }
    const bool ownR = meters || coils;
    QString ownHead;
    if (coils && meters)
        ownHead = QStringLiteral("Egen R / målerens indre R [Ω]");
    else if (coils)
        ownHead = QStringLiteral("Egen R [Ω]");
    else
        ownHead = QStringLiteral("Målerens indre R [Ω]");

    std::vector<QString> heads = {QStringLiteral("Navn"), QStringLiteral("Type"),
                                  QStringLiteral("Værdi") +
                                      (meters ? QStringLiteral(" / måler viser") : QString())};
    if (ownR) heads.push_back(ownHead);
    heads.insert(heads.end(), {QStringLiteral("Kendt U [V]"), QStringLiteral("Kendt I [A]"),
                               QStringLiteral("Kendt P [W]")});
    for (size_t col = 0; col < heads.size(); ++col) {
        auto* h = new QLabel(QStringLiteral("<b>") + heads[col] + QStringLiteral("</b>"), tableBox);
        h->setProperty("class", "desc");
        table->addWidget(h, 0, static_cast<int>(col));
    }

    if (nodes.size() > kMaxTableNodes) {
        auto* tooMany = new QLabel(QStringLiteral("Kredsen har for mange dele til tabellen."), tableBox);
        tooMany->setProperty("class", "hint");
        table->addWidget(tooMany, 1, 0, 1, static_cast<int>(heads.size()));
        partsNotes->hide();
        return;
    }

    const QString accent = QString::fromStdString(colors().accent);
    auto dash = [this] {
        auto* l = new QLabel(QStringLiteral("—"), tableBox);
        l->setProperty("class", "unit");
        l->setAlignment(Qt::AlignCenter);
        return l;
    };
    int rowIndex = 1;
    for (const fl::CNodePtr& n : nodes) {
        int col = 0;
        const std::string id = n->id;
        auto* name = makeButton(QString::fromStdString(n->name), tableBox, QStringLiteral("linkbtn"));
        if (id == c.sel)
            name->setStyleSheet(QStringLiteral("QPushButton { font-weight: 700; color: ") + accent +
                                QStringLiteral("; }"));
        connect(name, &QPushButton::clicked, this, [this, id] { select(QString::fromStdString(id)); });
        table->addWidget(name, rowIndex, col++);
        table->addWidget(new QLabel(QString::fromStdString(fl::kindWord(n->k)), tableBox), rowIndex, col++);

        auto cell = [&](const std::string& column, const QString& placeholder) {
            auto* e = new QLineEdit(QString::fromStdString(*memberOf(*n, column)), tableBox);
            e->setPlaceholderText(placeholder);
            e->setMinimumWidth(70);
            e->setMaximumWidth(140);
            if (!readable(e->text().toStdString(), column == "r")) setClass(e, QStringLiteral("err"));
            connect(e, &QLineEdit::textChanged, this, [this, e, id, column] { fieldChanged(e, id, column); });
            connect(e, &QLineEdit::returnPressed, this, &KredsPage::compute);
            partEdits[{id, column}] = e;
            table->addWidget(e, rowIndex, col++);
        };

        if (n->group)
            cell("R", QStringLiteral("R [Ω]"));
        else if (isMeter(*n))
            cell("v", QStringLiteral("viser (kendt) [") +
                          (n->k == "A" ? QStringLiteral("A") : QStringLiteral("V")) + QStringLiteral("]"));
        else
            cell("v", n->k == "R"   ? QStringLiteral("Ω")
                      : n->k == "L" ? QStringLiteral("H")
                                    : QStringLiteral("F"));

        if (ownR) {
            if (!n->group && (isMeter(*n) || (ac && n->k == "L")))
                cell("r", QStringLiteral("tom = ideel"));
            else
                table->addWidget(dash(), rowIndex, col++);
        }
        for (const char* q : {"U", "I", "P"}) {
            if (isMeter(*n))
                table->addWidget(dash(), rowIndex, col++);
            else
                cell(q, QString());
        }
        ++rowIndex;
    }
    table->setColumnStretch(static_cast<int>(heads.size()), 1);

    QStringList notes;
    if (meters)
        notes << QStringLiteral(
            "Målere er ideelle, hvis \"indre R\" står tomt (amperemeteret har ingen modstand, "
            "voltmeteret trækker ingen strøm). Skriv hvad måleren viser, hvis opgaven fortæller det "
            "– så kan programmet regne baglæns ud fra det.");
    if (coils)
        notes << QStringLiteral(
            "En rigtig spole har både reaktans X<sub>L</sub> og en ohmsk modstand (tab i "
            "kobbertråden). Skriv spolens egen modstand i kolonnen \"Egen R\" – lad den stå tom for "
            "en ideel spole, eller skriv <b>?</b> hvis den er ukendt og skal findes.");
    partsNotes->setText(notes.join(QStringLiteral("<br><br>")));
    partsNotes->setVisible(!notes.isEmpty());
}

void KredsPage::fieldChanged(QLineEdit* edit, const std::string& id, const std::string& column) {
    fl::Circuit& c = circuit();
    fl::CNodePtr node, parent;
    if (!fl::find(c.root, id, &node, &parent)) return;
    std::string* member = memberOf(*node, column);
    if (!member) return;
    *member = edit->text().toStdString();
    setClass(edit, readable(*member, column == "r") ? QString() : QStringLiteral("err"));
    fl::saveCircuit();
    if (column == "v" || column == "R") drawing->refresh();
}

void KredsPage::select(const QString& id) {
    circuit().sel = id.toStdString();
    fl::saveCircuit();
    render();
}

void KredsPage::applyEdit(const std::string& op, const std::string& kind) {
    fl::edit(circuit(), op, kind);
    fl::saveCircuit();
    render();
}

void KredsPage::showMessage(const std::string& html) {
    resultHeading->hide();
    area->setHtml(html);
    shownText = fl::toText(circuit());
}

void KredsPage::compute() {
    if (!runBtn->isEnabled()) return;
    runBtn->setEnabled(false);
    runBtn->setText(QString::fromUtf8(kWorking));
    area->clear();
    resultHeading->hide();
    // After the repaint, so that "Regner…" shows before the work starts.
    QTimer::singleShot(0, this, [this] { computeNow(); });
}

void KredsPage::computeNow() {
    fl::Circuit& c = circuit();
    try {
        const std::string date = fl::sheetDate();
        auto drawn = std::make_shared<fl::Circuit>(snapshot(c));
        if (guide) {
            area->setProvider(
                [drawn, date] { return guarded([&] { return fl::fremgangsmaade(*drawn, date); }); });
            resultHeading->show();
        } else {
            // The solve runs inside the view's rendering pass, since the
            // steps' tall expressions are images of that pass; drawn again
            // (a change of theme) it solves the circuit as it was.
            struct Solved {
                fl::Sheet sheet;
                bool ok = false;
            };
            auto solved = std::make_shared<Solved>();
            area->setProvider([solved, drawn, date] {
                return guarded([&] {
                    solved->ok = false;
                    solved->sheet = fl::computeSheet(*drawn);
                    if (!solved->sheet.error.empty()) return fl::msgBox(solved->sheet.error, true);
                    std::string html = fl::regneark(solved->sheet, *drawn, date);
                    solved->ok = true;
                    return html;
                });
            });
            resultHeading->setVisible(solved->ok);
            if (solved->ok) drawing->refresh();
        }
    } catch (const std::runtime_error&) {
        showMessage(fl::msgBox("Udregningen gik i stå – tjek værdierne.", true));
    } catch (...) {
        showMessage(fl::msgBox("Noget passer ikke – tjek værdierne.", true));
    }
    shownText = fl::toText(c);
    finishCompute();
}

void KredsPage::finishCompute() {
    runBtn->setText(runText);
    runBtn->setEnabled(true);
    storeSet(key::Recent, recentAfter(storeGet(key::Recent), route().toStdString()));
}

void KredsPage::showTask() {
    auto drawn = std::make_shared<fl::Circuit>(snapshot(circuit()));
    const std::string date = fl::sheetDate();
    resultHeading->hide();
    area->setProvider([drawn, date] { return guarded([&] { return fl::opgaveark(*drawn, date); }); });
    shownText = fl::toText(circuit());
}

void KredsPage::handleLink(const QString& link) {
    if (!link.startsWith(QLatin1String("fix:"))) {
        if (host) host->openLink(link);
        return;
    }
    // The view hands links over as URLs, with "|" possibly escaped.
    const QString href = QUrl::fromPercentEncoding(link.toUtf8());
    const QStringList parts = href.mid(4).split(QLatin1Char('|'));
    if (parts.size() < 3) return;
    const std::string value = parts.mid(2).join(QLatin1Char('|')).toStdString();
    fl::Circuit& c = circuit();
    if (parts[0] == QLatin1String("src")) {
        c.src[parts[1].toStdString()] = value;
    } else if (parts[0] == QLatin1String("comp")) {
        fl::CNodePtr node, parent;
        if (!fl::find(c.root, parts[1].toStdString(), &node, &parent)) return;
        node->v = value;
    } else {
        return;
    }
    fl::saveCircuit();
    render();
    compute();
}

void KredsPage::switchTo(bool wantAc) {
    if (wantAc == ac) return;
    const QString target = routeOf(guide, wantAc);
    if (!isOpen(target.toStdString())) {
        showMessage(fl::msgBox(lockMessage(wantAc).toStdString(), true));
        return;
    }
    fl::switchMode(wantAc ? "ac" : "dc");
    if (host) host->navigate(target);
}

bool KredsPage::openElsewhere(const fl::Circuit& in) {
    const bool wantAc = in.mode == "ac";
    if (wantAc == ac) return false;
    const QString target = routeOf(guide, wantAc);
    if (!isOpen(target.toStdString())) {
        showMessage(fl::msgBox(lockMessage(wantAc).toStdString(), true));
        return true;
    }
    fl::switchMode(wantAc ? "ac" : "dc");
    fl::Circuit moved = in;
    moved.solving = false;
    fl::setCircuit(moved);
    fl::saveCircuit();
    if (host) host->navigate(target);
    return true;
}

void KredsPage::installCircuit(const fl::Circuit& in) {
    fl::Circuit c = in;
    c.mode = ac ? "ac" : "dc";
    c.solving = false;
    fl::setCircuit(c);
    fl::saveCircuit();
    area->clear();
    resultHeading->hide();
    shownText.clear();
    render();
}

void KredsPage::setGiven(const std::string& key, const std::string& text) {
    circuit().src[key] = text;
    fl::saveCircuit();
    render();
}

bool KredsPage::setComponentValue(const std::string& id, const std::string& text) {
    fl::CNodePtr node, parent;
    if (!fl::find(circuit().root, id, &node, &parent)) return false;
    *(node->group ? &node->R : &node->v) = text;
    fl::saveCircuit();
    render();
    return true;
}

ValueField* KredsPage::sourceField(const QString& key) const {
    auto it = sourceFields.find(key.toStdString());
    return it == sourceFields.end() ? nullptr : it->second;
}

QLineEdit* KredsPage::partField(const std::string& id, const std::string& column) const {
    auto it = partEdits.find({id, column});
    return it == partEdits.end() ? nullptr : it->second;
}

QPushButton* KredsPage::button(const QString& text) const {
    // Buttons of an earlier render wait for their deletion, marked stale.
    auto live = [](const QPushButton* b) {
        return !b->property("stale").toBool() && !b->parentWidget()->property("stale").toBool();
    };
    for (QPushButton* b : findChildren<QPushButton*>())
        if (b->text() == text && live(b) && b->objectName().isEmpty()) return b;
    for (QPushButton* b : findChildren<QPushButton*>())
        if (b->text() == text && live(b)) return b;
    return nullptr;
}

void KredsPage::onEnter() {
    fl::Circuit& c = circuit();
    // A circuit installed from elsewhere (a paste on the sibling page, a
    // task) shows without the result, task sheet or notice of the one before.
    if (area->view()->hasContent() && fl::toText(c) != shownText) {
        area->clear();
        resultHeading->hide();
        shownText.clear();
    }
    render();
    refreshSaved();
}

void KredsPage::onSettings() {
    area->view()->refresh();
    for (const auto& [key, f] : sourceFields)
        f->setInterp(QString::fromStdString(fl::interpretLine(f->text().toStdString(), colors().bad)));
}

void KredsPage::onTheme() {
    area->view()->refresh();
    // A page out of sight leaves the working circuit to the one on screen;
    // onEnter() renders it anyway.
    if (!isVisible()) return;
    render();
    if (preview->isVisible()) drawSavedPreview();
}

} // namespace app
