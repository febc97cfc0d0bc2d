#include "app/pages/tools/machinepages.h"

#include "app/widgets/figureview.h"
#include "app/widgets/page.h"
#include "app/widgets/valuefield.h"
#include "fl/tools/machinefigs.h"
#include "fl/tools/machines.h"
#include "store/datastore.h"
#include "store/keys.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

#include <cmath>

namespace app {

namespace {

const char kRun[] = "Beregn";

// A heading inside the field grid, across both columns.
void addGroup(Card* card, const QString& text) {
    QGridLayout* grid = card->grid();
    auto* label = new QLabel(text, card->fieldArea);
    label->setProperty("class", "sh");
    grid->addWidget(label, grid->rowCount(), 0, 1, 2);
}

QComboBox* addStoredChoice(ToolPage* page, const QString& label,
                           const std::vector<std::pair<QString, QString>>& items, const char* storeKey) {
    QComboBox* box = page->addChoice(label, items);
    const int stored = box->findData(QString::fromStdString(DataStore::instance().getString(storeKey)));
    if (stored >= 0) box->setCurrentIndex(stored);
    QObject::connect(box, &QComboBox::currentIndexChanged, page, [box, storeKey] {
        DataStore::instance().set(storeKey, box->currentData().toString().toStdString());
    });
    return box;
}

// Fields typed in an earlier session come back; absent ones keep their default.
void restoreFields(ToolPage* page, const std::string& prefix) {
    const DataStore& store = DataStore::instance();
    for (ValueField* f : page->form()->fields) {
        const Json v = store.get(prefix + f->key.toStdString());
        if (v.kind == Json::String) f->setText(QString::fromStdString(v.str));
    }
}

// Every save rewrites the data file, so only what changed is written, and
// after the sheet has been painted.
void rememberFields(ToolPage* page, const std::string& prefix) {
    QTimer::singleShot(0, page, [page, prefix] {
        DataStore& store = DataStore::instance();
        for (const auto& [key, text] : page->form()->values())
            if (store.getString(prefix + key) != text) store.set(prefix + key, text);
    });
}

// Runs `after` whenever the student runs the tool, by button or by Enter.
template <typename F> void afterEachRun(ToolPage* page, F after) {
    QObject::connect(page->runButton(), &QPushButton::clicked, page, after);
    for (ValueField* f : page->form()->fields)
        QObject::connect(f, &ValueField::enterPressed, page, after);
}

void liveOnEveryChange(ToolPage* page) {
    for (ValueField* f : page->form()->fields)
        QObject::connect(f, &ValueField::changed, page, [page] { page->live(); });
}

// Painted from its shapes: an SVG renderer would lay out and stroke every
// label anew at each keystroke. A figure that came out the same (a key that
// left the number as it was) is not painted again.
void showFigure(FigureView* view, fl::FigureOut fig) {
    if (fig.body != view->figure().body) view->setFigure(std::move(fig));
}

std::string choice(const QComboBox* box) {
    return box->currentData().toString().toStdString();
}

// The plate's fields with the live figure beside them where the card has room
// for the figure at nearly its own size, and the figure above them where it
// hasn't: squeezed into the side, its labels grow too small to read.
class PlateRow : public QWidget {
  public:
    PlateRow(QWidget* fields, FigureView* figure, QWidget* parent)
        : QWidget(parent), fields(fields), figure(figure),
          box(new QBoxLayout(QBoxLayout::LeftToRight, this)) {
        box->setContentsMargins(0, 0, 0, 0);
        box->setSpacing(16);
        box->addWidget(fields, 1);
        box->addWidget(figure, 0, Qt::AlignTop);
    }

  protected:
    void resizeEvent(QResizeEvent* event) override {
        QWidget::resizeEvent(event);
        arrange();
    }
    // A new text size widens the fields.
    void changeEvent(QEvent* event) override {
        QWidget::changeEvent(event);
        if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) arrange();
    }

  private:
    void arrange() {
        const int room = width() - fields->sizeHint().width() - box->spacing();
        const bool narrow = room < figure->sizeHint().width() * 9 / 10;
        if (narrow == stacked) return;
        stacked = narrow;
        // Bottom to top puts the figure above the fields.
        box->setDirection(stacked ? QBoxLayout::BottomToTop : QBoxLayout::LeftToRight);
        box->setAlignment(figure, stacked ? Qt::Alignment() : Qt::AlignTop);
    }

    QWidget* fields;
    FigureView* figure;
    QBoxLayout* box;
    bool stacked = false;
};

} // namespace

// ---- Compensation

KompPage::KompPage(PageHost* h, QWidget* parent)
    : ToolPage(h, QStringLiteral("Kompensering"),
               QStringLiteral(
                   "En induktiv belastning (fx en motor eller lysstofrør) har lav cos φ. Kondensatorer "
                   "leverer reaktiv effekt, så nettet slipper for den, og strømmen bliver mindre. Udfyld P "
                   "(eller strømmen I), den nuværende og den ønskede cos φ."),
               QStringLiteral("Kompensering (faseforbedring)"), QStringLiteral("Værktøj"), parent) {
    net = addStoredChoice(this, QStringLiteral("Net"),
                          {{QStringLiteral("1"), QStringLiteral("1-faset")},
                           {QStringLiteral("D"), QStringLiteral("3-faset – kondensatorer i trekant (Δ)")},
                           {QStringLiteral("Y"), QStringLiteral("3-faset – kondensatorer i stjerne (Y)")}},
                          key::KompNet);
    addField(QStringLiteral("P"), QStringLiteral("Belastningens aktive effekt"), QStringLiteral("W"));
    addField(QStringLiteral("I"), QStringLiteral("…eller strømmen før kompensering (hvis P ikke er givet)"),
             QStringLiteral("A"));
    addField(QStringLiteral("cosphi1"), QStringLiteral("cos φ før kompensering"), QString());
    addField(QStringLiteral("cosphi2"), QStringLiteral("Ønsket cos φ efter kompensering"), QString(),
             QStringLiteral("0,95"));
    addField(QStringLiteral("U"),
             QStringLiteral("1-faset: spændingen U · 3-faset: netspændingen U<sub>N</sub>"),
             QStringLiteral("V"));
    addField(QStringLiteral("f"), QStringLiteral("Frekvens"), QStringLiteral("Hz"), QStringLiteral("50"));
    addRunButton(QString::fromUtf8(kRun), false);
    connect(net, &QComboBox::currentIndexChanged, this, &KompPage::netChanged);
    netChanged();
}

void KompPage::netChanged() {
    followNet(field(QStringLiteral("U")), choice(net) != "1");
}

fl::ToolOut KompPage::compute(const fl::FormMap& form) const {
    return fl::compensate(form, choice(net));
}

// ---- Motor

MotorPage::MotorPage(PageHost* h, QWidget* parent)
    : ToolPage(
          h, QStringLiteral("Motor"),
          QStringLiteral("Skriv tallene fra motorens mærkeplade, og lad dem, du ikke kender, stå tomme. "
                         "Programmet finder strøm, optaget effekt, virkningsgrad, tab, slip, moment og "
                         "startstrøm. Husk: P₂ på mærkepladen er den <b>afgivne</b> (mekaniske) effekt på "
                         "akslen."),
          QStringLiteral("Motor (mærkeplade)"),
          QStringLiteral("Værktøj · standardformler – står ikke i klassens formelsamling"), parent) {
    phases = addStoredChoice(
        this, QStringLiteral("Motor"),
        {{QStringLiteral("3"), QStringLiteral("Trefaset")}, {QStringLiteral("1"), QStringLiteral("Enfaset")}},
        key::MotorPh);
    start = addStoredChoice(this, QStringLiteral("Start"),
                            {{QStringLiteral("dol"), QStringLiteral("Direkte start")},
                             {QStringLiteral("yd"), QStringLiteral("Stjerne-trekant-start")}},
                            key::MotorStart);
    addGroup(form(), QStringLiteral("Nettet"));
    addField(QStringLiteral("U_N"), QStringLiteral("Netspænding (mellem to faser)"), QStringLiteral("V"),
             QStringLiteral("400"));
    addField(QStringLiteral("f"), QStringLiteral("Frekvens"), QStringLiteral("Hz"), QStringLiteral("50"));
    addGroup(form(), QStringLiteral("Mærkepladen"));
    addField(QStringLiteral("P_2"), QStringLiteral("Afgivet effekt – akseleffekt (skriv fx 5,5k for 5,5 kW)"),
             QStringLiteral("W"));
    addField(QStringLiteral("I_N"), QStringLiteral("Mærkestrøm"), QStringLiteral("A"));
    addField(QStringLiteral("cosphi"), QStringLiteral("Effektfaktor cos φ"), QString());
    addField(QStringLiteral("eta"), QStringLiteral("Virkningsgrad η (fx 0,87)"), QString());
    addField(QStringLiteral("nr"), QStringLiteral("Omdrejningstal"), QStringLiteral("o/min"));
    addField(QStringLiteral("p"), QStringLiteral("Antal polpar (findes ellers ud fra n)"), QString());
    addField(QStringLiteral("k_st"),
             QStringLiteral("Startstrømsfaktor I<sub>start</sub> / I<sub>N</sub> (typisk 5–8)"), QString());
    addRunButton(QString::fromUtf8(kRun), true, QStringLiteral("Eksempel"));

    // The fields in a panel of their own, the plate figure beside them.
    fig = new FigureView;
    Card* card = form();
    const int at = card->layout->indexOf(card->fieldArea);
    card->layout->removeWidget(card->fieldArea);
    card->layout->insertWidget(at, new PlateRow(card->fieldArea, fig, card));

    restoreFields(this, key::MotorField);
    phaseChanged();
    connect(phases, &QComboBox::currentIndexChanged, this, &MotorPage::phaseChanged);
    connect(start, &QComboBox::currentIndexChanged, this, &MotorPage::live);
    liveOnEveryChange(this);
    afterEachRun(this, [this] { remember(); });
    live();
}

bool MotorPage::threePhase() const {
    return choice(phases) != "1";
}

bool MotorPage::starDelta() const {
    return choice(start) == "yd";
}

// The voltage's words and default follow the phases; a voltage the student
// typed stays.
void MotorPage::phaseChanged() {
    ValueField* u = field(QStringLiteral("U_N"));
    u->desc->setText(threePhase() ? QStringLiteral("Netspænding (mellem to faser)")
                                  : QStringLiteral("Spænding"));
    followNet(u, threePhase());
    live();
}

void MotorPage::remember() {
    rememberFields(this, key::MotorField);
}

fl::ToolOut MotorPage::compute(const fl::FormMap& form) const {
    return fl::motor(form, threePhase(), starDelta());
}

void MotorPage::afterClear() {
    field(QStringLiteral("U_N"))->setText(threePhase() ? QStringLiteral("400") : QStringLiteral("230"));
    field(QStringLiteral("f"))->setText(QStringLiteral("50"));
    remember();
    live();
}

void MotorPage::thirdAction() {
    struct Example {
        const char* key;
        const char* three;
        const char* one;
    };
    static const Example kExample[] = {
        {"U_N", "400", "230"},      {"f", "50", "50"}, {"P_2", "5,5k", "750"}, {"I_N", "11", "5,2"},
        {"cosphi", "0,83", "0,85"}, {"eta", "", ""},   {"nr", "1445", "2820"}, {"p", "", ""},
        {"k_st", "7", "5"}};
    for (const Example& e : kExample)
        field(QString::fromLatin1(e.key))->setText(QString::fromUtf8(threePhase() ? e.three : e.one));
    runClicked();
    remember();
}

void MotorPage::live() {
    if (!fig) return;
    const fl::ToolInputs in = fl::readForm(formMap());
    showFigure(fig, fl::motorFigure({in.numbers, {}}, threePhase(), starDelta()));
}

// ---- Transformer

TrafoPage::TrafoPage(PageHost* h, QWidget* parent)
    : ToolPage(h, QStringLiteral("Transformer"),
               QStringLiteral(
                   "Skriv de værdier, du kender, og lad resten stå tomme. Programmet bruger formlerne fra "
                   "formelhjulet til at finde resten. Du skal kende mindst tre uafhængige størrelser – fx "
                   "U<sub>P</sub>, U<sub>S</sub> og S, eller U<sub>P</sub>, n og I<sub>S</sub>. Ideel "
                   "transformer: S er den samme på begge sider."),
               QStringLiteral("Transformer"), QStringLiteral("Værktøj · formelsamling s. 9 og formelhjulet"),
               parent) {
    fig = new FigureView;
    form()->layout->addWidget(fig);
    std::string group;
    for (const fl::TrafoField& f : fl::transformerFields()) {
        if (f.group != group) addGroup(form(), QString::fromStdString(group = f.group));
        addField(QString::fromStdString(f.key), QString::fromStdString(f.label),
                 QString::fromStdString(f.unit));
    }
    addRunButton(QString::fromUtf8(kRun), true);
    restoreFields(this, key::TrafoField);
    liveOnEveryChange(this);
    afterEachRun(this, [this] { remember(); });
    live();
}

fl::ToolOut TrafoPage::compute(const fl::FormMap& form) const {
    return fl::transformer(form);
}

void TrafoPage::remember() {
    rememberFields(this, key::TrafoField);
}

void TrafoPage::afterClear() {
    DataStore& store = DataStore::instance();
    for (const fl::TrafoField& f : fl::transformerFields())
        if (!store.get(key::TrafoField + f.key).isNull()) store.remove(key::TrafoField + f.key);
    live();
}

void TrafoPage::live() {
    if (!fig) return;
    showFigure(fig, fl::transformerFigure({fl::readForm(formMap()).numbers, {}}));
}

// ---- Three-phase load

TrefasePage::TrefasePage(PageHost* h, QWidget* parent)
    : ToolPage(h, QStringLiteral("Trefaset"),
               QStringLiteral(
                   "Vælg stjerne eller trekant, og udfyld det, du kender. Programmet finder resten med "
                   "formlerne fra YΔ-arket – og viser også, hvad der sker, hvis de samme modstande kobles "
                   "om, eller hvis der kommer en fejl."),
               QStringLiteral("Trefaset belastning – stjerne og trekant"),
               QStringLiteral("Værktøj · YΔ-arket (symmetrisk belastning)"), parent) {
    fig = new FigureView;
    form()->layout->addWidget(fig);
    connection = addStoredChoice(this, QStringLiteral("Kobling"),
                                 {{QStringLiteral("Y"), QStringLiteral("Stjerne (Y)")},
                                  {QStringLiteral("D"), QStringLiteral("Trekant (Δ)")}},
                                 key::TfConn);
    addField(QStringLiteral("U_N"), QStringLiteral("Netspænding (mellem to faser)"), QStringLiteral("V"),
             QStringLiteral("400"));
    addField(QStringLiteral("U_F"), QStringLiteral("Fasespænding (over én belastning)"), QStringLiteral("V"));
    addField(QStringLiteral("I_N"), QStringLiteral("Netstrøm (i ledningen)"), QStringLiteral("A"));
    addField(QStringLiteral("I_F"), QStringLiteral("Fasestrøm (gennem én belastning)"), QStringLiteral("A"));
    addField(QStringLiteral("R"),
             QStringLiteral("Modstand pr. fase (ved cos φ under 1: impedansen Z pr. fase)"),
             QStringLiteral("Ω"));
    addField(QStringLiteral("cosphi"), QStringLiteral("Effektfaktor (1 for ren modstand)"), QString());
    addField(QStringLiteral("P"), QStringLiteral("Aktiv effekt i alt"), QStringLiteral("W"));
    addField(QStringLiteral("S"), QStringLiteral("Tilsyneladende effekt i alt"), QStringLiteral("VA"));
    addField(QStringLiteral("Q"), QStringLiteral("Reaktiv effekt i alt"), QStringLiteral("VAr"));
    addRunButton(QString::fromUtf8(kRun), false);
    connect(connection, &QComboBox::currentIndexChanged, this, &TrefasePage::live);
    liveOnEveryChange(this);
    live();
}

bool TrefasePage::star() const {
    return choice(connection) != "D";
}

fl::ToolOut TrefasePage::compute(const fl::FormMap& form) const {
    return fl::threePhaseLoad(form, star());
}

void TrefasePage::live() {
    if (!fig) return;
    fl::ToolInputs in = fl::readForm(formMap());
    // The typed cos φ alone says resistor or impedance here; the sheet may learn more.
    const double cosphi = in.get("cosphi");
    const bool impedance = std::isfinite(cosphi) && std::fabs(cosphi - 1) > 1e-12;
    if (impedance && in.has("R")) {
        in.numbers["Z"] = in.numbers["R"];
        in.numbers.erase("R");
    }
    showFigure(fig, fl::connectionFigure({in.numbers, {}}, star(), impedance ? "Z" : "R"));
}

} // namespace app
