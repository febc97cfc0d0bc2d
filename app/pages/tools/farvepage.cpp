#include "app/pages/tools/farvepage.h"

#include "app/pages/tools/smallpages.h"
#include "app/widgets/page.h"
#include "app/widgets/svgview.h"
#include "app/widgets/valuefield.h"
#include "fl/tools/resistors.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QPainter>
#include <QPixmap>
#include <QVBoxLayout>

namespace app {

namespace {

QString qs(const std::string& s) {
    return QString::fromStdString(s);
}

// A swatch of the ring's paint beside its name; "no ring" is an empty frame.
QIcon swatch(const std::string& hex) {
    QPixmap pm(16, 16);
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    p.setPen(QColor(0x80, 0x80, 0x80));
    if (!hex.empty()) p.setBrush(QColor(qs(hex)));
    p.drawRect(1, 1, 13, 13);
    return QIcon(pm);
}

void fill(QComboBox* combo, fl::BandRole role, bool allowNone) {
    const QString keep = combo->currentData().toString();
    combo->blockSignals(true);
    combo->clear();
    for (const fl::BandColour* b : fl::bandsFor(role)) {
        if (!allowNone && b->key == "ingen") continue;
        combo->addItem(swatch(b->hex), qs(b->name), qs(b->key));
    }
    const int at = combo->findData(keep);
    combo->setCurrentIndex(at < 0 ? 0 : at);
    combo->blockSignals(false);
}

void choose(QComboBox* combo, const char* key) {
    const int at = combo->findData(QString::fromLatin1(key));
    if (at >= 0) combo->setCurrentIndex(at);
}

} // namespace

FarvePage::FarvePage(PageHost* h, QWidget* parent)
    : ToolPage(h, QStringLiteral("Modstandens farvekode"),
               QStringLiteral("Vælg ringenes farver for at få værdien – eller skriv en værdi og få den nærmeste "
                              "standardværdi og dens ringe. Læs fra den ende, hvor ringene sidder tættest."),
               QStringLiteral("Farvekoden"), QStringLiteral("Småværktøj · farvekode (IEC 60062)"), parent) {
    direction = addChoice(QStringLiteral("Retning"),
                          {{QStringLiteral("farver"), QStringLiteral("Farver → værdi")},
                           {QStringLiteral("vaerdi"), QStringLiteral("Værdi → farver")}},
                          QStringLiteral("retning"));
    count = addChoice(QStringLiteral("Antal ringe"),
                      {{QStringLiteral("4"), QStringLiteral("4 ringe")},
                       {QStringLiteral("5"), QStringLiteral("5 ringe")},
                       {QStringLiteral("6"), QStringLiteral("6 ringe")}},
                      QStringLiteral("ringe"));
    // The rings side by side, in the order they sit on the resistor.
    ringRow = form()->addRow(QString());
    ringLabel = form()->fieldGrid->itemAtPosition(form()->fieldGrid->rowCount() - 1, 0)->widget();
    for (int i = 1; i <= 6; ++i) {
        QComboBox* ring = addChoice(QStringLiteral("Ring %1").arg(i), {}, QStringLiteral("r%1").arg(i));
        // Six side by side must fit the column; the house's 150 px would not.
        ring->setMinimumWidth(0);
        ring->setStyleSheet(QStringLiteral("QComboBox { min-width: 72px; }"));
        showChoice(form(), ring, false);
        QWidget* box = ring->parentWidget();
        ringRow->insertWidget(i - 1, box);
        box->show();
        rings.push_back(ring);
    }
    addField(QStringLiteral("R"), QStringLiteral("Den ønskede modstand – fx 4,5k"), QStringLiteral("Ω"));
    series = addChoice(QStringLiteral("Standardrække"),
                       {{QStringLiteral("E12"), QStringLiteral("E12 – 12 værdier pr. dekade (±10 %)")},
                        {QStringLiteral("E24"), QStringLiteral("E24 – 24 værdier pr. dekade (±5 %)")},
                        {QStringLiteral("E96"), QStringLiteral("E96 – 96 værdier pr. dekade (±1 %)")}},
                       QStringLiteral("serie"));
    series->setCurrentIndex(1);
    picture = new SvgView;
    form()->layout->addWidget(picture);
    addRunButton(QStringLiteral("Beregn"), false);

    connect(direction, &QComboBox::currentIndexChanged, this, &FarvePage::directionChanged);
    connect(count, &QComboBox::currentIndexChanged, this, &FarvePage::countChanged);
    for (QComboBox* r : rings)
        connect(r, &QComboBox::currentIndexChanged, this, &FarvePage::live);
    countChanged();
    directionChanged();
}

int FarvePage::ringCount() const {
    return count->currentData().toString().toInt();
}

void FarvePage::countChanged() {
    const int n = ringCount();
    const int digits = n == 4 ? 2 : 3;
    for (int i = 0; i < 6; ++i) {
        QComboBox* r = rings[static_cast<size_t>(i)];
        if (i < digits)
            fill(r, fl::BandRole::Digit, false);
        else if (i == digits)
            fill(r, fl::BandRole::Multiplier, false);
        else if (i == digits + 1)
            fill(r, fl::BandRole::Tolerance, n == 4);
        else
            fill(r, fl::BandRole::Tempco, false);
    }
    // A resistor a student is likely to hold: 4,7 kΩ ±5 %, or 1 kΩ ±1 % (100 ppm/K).
    static const char* const kFour[] = {"gul", "violet", "rod", "guld"};
    static const char* const kFive[] = {"brun", "sort", "sort", "brun", "brun", "brun"};
    for (int i = 0; i < n; ++i)
        choose(rings[static_cast<size_t>(i)], n == 4 ? kFour[i] : kFive[i]);
    directionChanged();
}

void FarvePage::directionChanged() {
    const bool byColour = direction->currentData().toString() == QLatin1String("farver");
    const int n = ringCount();
    for (int i = 0; i < 6; ++i)
        rings[static_cast<size_t>(i)]->parentWidget()->setVisible(byColour && i < n);
    ringLabel->setVisible(byColour);
    field(QStringLiteral("R"))->setVisible(!byColour);
    showChoice(form(), series, !byColour);
    live();
}

void FarvePage::live() {
    if (direction->currentData().toString() != QLatin1String("farver")) {
        picture->setSvg({});
        return;
    }
    std::vector<std::string> keys;
    for (int i = 0; i < ringCount(); ++i)
        keys.push_back(rings[static_cast<size_t>(i)]->currentData().toString().toStdString());
    picture->setSvg(fl::resistorSvg(keys));
}

void FarvePage::onTheme() {
    ToolPage::onTheme();
    live();
}

fl::ToolOut FarvePage::compute(const fl::FormMap& form) const {
    auto it = form.find("retning");
    return it != form.end() && it->second == "vaerdi" ? fl::valueToColour(form) : fl::colourToValue(form);
}

} // namespace app
