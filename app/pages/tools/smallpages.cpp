#include "app/pages/tools/smallpages.h"

#include "app/shell/theme.h"
#include "app/widgets/page.h"
#include "app/widgets/valuefield.h"
#include "fl/tools/resistors.h"
#include "fl/tools/small.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

namespace app {

namespace {

const char kRun[] = "Beregn";
const char kSmallTool[] = "Småværktøj";

QString qs(const std::string& s) {
    return QString::fromStdString(s);
}

} // namespace

void showChoice(Card* form, QComboBox* combo, bool on) {
    QWidget* box = combo->parentWidget();
    box->setVisible(on);
    QGridLayout* grid = form->fieldGrid;
    for (int r = 0; r < grid->rowCount(); ++r) {
        QLayoutItem* cell = grid->itemAtPosition(r, 1);
        if (!cell || !cell->layout() || cell->layout()->indexOf(box) < 0) continue;
        if (QLayoutItem* name = grid->itemAtPosition(r, 0); name && name->widget()) name->widget()->setVisible(on);
    }
}

EnergiPage::EnergiPage(PageHost* h, QWidget* parent)
    : ToolPage(h, QStringLiteral("Energi og pris"),
               QStringLiteral("Effekt gange tid giver energien i kWh, og kWh gange elprisen giver, hvad det koster om "
                              "året. Skriv også effekten af det nye, hvis du vil se, hvad en udskiftning sparer – fx "
                              "glødepærer til LED – og hvornår den har tjent sig hjem."),
               QStringLiteral("Energi og pris"), QString::fromUtf8(kSmallTool) + QStringLiteral(" · standardformler"),
               parent) {
    addField(QStringLiteral("P"), QStringLiteral("Effekt – for ét apparat"), QStringLiteral("W"));
    addField(QStringLiteral("n"), QStringLiteral("Antal apparater"), QString(), QStringLiteral("1"));
    addField(QStringLiteral("h"), QStringLiteral("Brugstid pr. dag"), QStringLiteral("timer"));
    addField(QStringLiteral("d_dage"), QStringLiteral("Dage om året, det bruges"), QStringLiteral("dage"),
             QStringLiteral("365"));
    addField(QStringLiteral("k_el"), QStringLiteral("Elpris"), QStringLiteral("kr/kWh"), QStringLiteral("2,5"));
    addField(QStringLiteral("P2"), QStringLiteral("Udskiftning: effekten af det nye – kan stå tom"),
             QStringLiteral("W"));
    addField(QStringLiteral("Inv"), QStringLiteral("Udskiftning: hvad det koster at skifte – kan stå tom"),
             QStringLiteral("kr"));
    addRunButton(QString::fromUtf8(kRun), true);
}

fl::ToolOut EnergiPage::compute(const fl::FormMap& form) const {
    return fl::energyPrice(form);
}

EnhederPage::EnhederPage(PageHost* h, QWidget* parent)
    : ToolPage(h, QStringLiteral("Enhedsomregner"),
               QStringLiteral("Vælg, hvad du vil omregne, og skriv værdien i den enhed, du har. Du får den i alle de "
                              "andre enheder, hver med sit regnestykke."),
               QStringLiteral("Omregning"), QString::fromUtf8(kSmallTool), parent) {
    std::vector<std::pair<QString, QString>> kinds;
    for (const fl::UnitKind& k : fl::unitKinds())
        kinds.emplace_back(qs(k.key), qs(k.label));
    kind = addChoice(QStringLiteral("Hvad vil du omregne?"), kinds, QStringLiteral("art"));
    addField(QStringLiteral("x"), QStringLiteral("Værdien"), QString());
    from = addChoice(QStringLiteral("Den enhed, værdien er i"), {}, QStringLiteral("fra"));
    std::vector<std::pair<QString, QString>> units;
    for (const std::string& u : fl::prefixUnits())
        units.emplace_back(qs(u), u.empty() ? QStringLiteral("ingen enhed") : qs(u));
    unit = addChoice(QStringLiteral("Enheden efter præfikset (V, A, Ω, F …)"), units, QStringLiteral("enhed"));
    addRunButton(QStringLiteral("Omregn"), true);
    connect(kind, &QComboBox::currentIndexChanged, this, &EnhederPage::kindChanged);
    kindChanged();
}

void EnhederPage::kindChanged() {
    const std::string key = kind->currentData().toString().toStdString();
    from->clear();
    for (const fl::UnitKind& k : fl::unitKinds()) {
        if (k.key != key) continue;
        for (const fl::UnitDef& u : k.units)
            from->addItem(qs(u.label), qs(u.key));
    }
    showChoice(form(), unit, key == "prefiks");
}

fl::ToolOut EnhederPage::compute(const fl::FormMap& form) const {
    return fl::convertUnits(form);
}

ResPage::ResPage(PageHost* h, QWidget* parent)
    : ToolPage(h, QStringLiteral("Modstande i serie / parallel"),
               QStringLiteral("Skriv modstandene adskilt af semikolon, fx <b>100; 220; 4,7k</b>, og vælg, hvordan de "
                              "sidder. Du får R<sub>total</sub> og den nærmeste standardværdi."),
               QStringLiteral("R<sub>total</sub>"), QString::fromUtf8(kSmallTool) + QStringLiteral(" · formelsamling s. 4"),
               parent) {
    ValueField* list =
        addField(QStringLiteral("liste"), QStringLiteral("Modstandene, adskilt af semikolon"), QStringLiteral("Ω"));
    list->symbol->setText(QStringLiteral("R"));
    list->edit->setMaximumWidth(420);
    list->edit->setPlaceholderText(QStringLiteral("100; 220; 4,7k"));
    addChoice(QStringLiteral("Forbindelse"),
              {{QStringLiteral("serie"), QStringLiteral("I serie – efter hinanden")},
               {QStringLiteral("parallel"), QStringLiteral("I parallel – ved siden af hinanden")}},
              QStringLiteral("kobling"));
    addRunButton(QString::fromUtf8(kRun), true);
    // After the frame's own interpretation, so this one is what shows.
    connect(list, &ValueField::changed, this, &ResPage::interpretList);
}

void ResPage::interpretList() {
    ValueField* list = field(QStringLiteral("liste"));
    list->setInterp(qs(fl::listInterpretation(list->text().toStdString(), colors().bad)));
}

void ResPage::onSettings() {
    ToolPage::onSettings();
    interpretList();
}

void ResPage::onTheme() {
    ToolPage::onTheme();
    interpretList();
}

fl::ToolOut ResPage::compute(const fl::FormMap& form) const {
    return fl::resistorTotal(form);
}

TriPage::TriPage(PageHost* h, QWidget* parent)
    : ToolPage(h, QStringLiteral("Retvinklet trekant"),
               QStringLiteral("Den rette vinkel står mellem kateterne a og b, og hypotenusen c står over for den. A er "
                              "vinklen over for a, B vinklen over for b. Skriv to af de fem – mindst én af dem en side "
                              "– så finder værktøjet resten."),
               QStringLiteral("Trekanten"), QString::fromUtf8(kSmallTool) + QStringLiteral(" · formelsamling s. 22–25"),
               parent) {
    addField(QStringLiteral("a"), QStringLiteral("Katete – over for A"), QString());
    addField(QStringLiteral("b"), QStringLiteral("Katete – over for B"), QString());
    addField(QStringLiteral("c"), QStringLiteral("Hypotenuse – den længste side"), QString());
    addField(QStringLiteral("A"), QStringLiteral("Vinkel A"), QStringLiteral("°"));
    addField(QStringLiteral("B"), QStringLiteral("Vinkel B"), QStringLiteral("°"));
    addRunButton(QString::fromUtf8(kRun), true);
}

fl::ToolOut TriPage::compute(const fl::FormMap& form) const {
    return fl::rightTriangle(form);
}

VecPage::VecPage(PageHost* h, QWidget* parent)
    : ToolPage(h, QStringLiteral("Læg vektorer sammen"),
               QStringLiteral("Skriv op til fire vektorer. Vinklen regnes mod uret fra den vandrette akse: 0° peger mod "
                              "højre og 90° opad. En vektor, der står tom, er ikke med."),
               QStringLiteral("Summen"), QString::fromUtf8(kSmallTool) + QStringLiteral(" · formelsamling s. 26"),
               parent) {
    shape = addChoice(QStringLiteral("Vektorerne er givet"),
                      {{QStringLiteral("polar"), QStringLiteral("på polær form: længde og vinkel")},
                       {QStringLiteral("rekt"), QStringLiteral("på komposantform: x og y")}},
                      QStringLiteral("form"));
    for (int i = 1; i <= fl::kVectorCount; ++i) {
        const QString n = QString::number(i);
        addField(QStringLiteral("v") + n, QStringLiteral("Vektor %1: længde").arg(n), QString());
        addField(QStringLiteral("V") + n, QStringLiteral("Vektor %1: vinkel").arg(n), QStringLiteral("°"));
    }
    for (int i = 1; i <= fl::kVectorCount; ++i) {
        const QString n = QString::number(i);
        addField(QStringLiteral("x") + n, QStringLiteral("Vektor %1: x-komposant").arg(n), QString());
        addField(QStringLiteral("y") + n, QStringLiteral("Vektor %1: y-komposant").arg(n), QString());
    }
    addRunButton(QString::fromUtf8(kRun), true);
    connect(shape, &QComboBox::currentIndexChanged, this, &VecPage::formChanged);
    formChanged();
}

void VecPage::formChanged() {
    const bool polar = shape->currentData().toString() == QLatin1String("polar");
    for (ValueField* f : form()->fields) {
        const QChar c = f->key.at(0);
        f->setVisible(polar == (c == QLatin1Char('v') || c == QLatin1Char('V')));
    }
}

fl::ToolOut VecPage::compute(const fl::FormMap& form) const {
    return fl::addVectors(form);
}

} // namespace app
