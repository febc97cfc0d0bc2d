#include "app/pages/tools/cablepick.h"

#include "app/pages/tools/toolpage.h"
#include "app/widgets/valuefield.h"
#include "fl/expr/numbers.h"
#include "fl/tools/tables.h"
#include "store/datastore.h"

#include <QComboBox>
#include <QLineEdit>

#include <cmath>

namespace app {

namespace {

// Puts the combo on the item whose data matches `data`; false when none does.
bool select(QComboBox* combo, const QString& data) {
    const int i = combo->findData(data);
    if (i >= 0) combo->setCurrentIndex(i);
    return i >= 0;
}

// The section is stored as the plain number ("1.5"), which reads back exactly.
QString sectionData(double mm2) {
    return QString::fromStdString(fl::fmtShortest(mm2));
}

void fill(ValueField* f, double value, const char* missing) {
    if (!f) return;
    if (std::isnan(value)) {
        f->setText(QString());
        f->edit->setPlaceholderText(QString::fromUtf8(missing));
        return;
    }
    f->setText(QString::fromStdString(fl::fmtValue10(value)));
    f->edit->setPlaceholderText(QString());
}

} // namespace

CablePick::CablePick(ToolPage* page, const QString& label, const QString& storeKey, bool withType,
                     const QString& defaultType, double defaultMm2)
    : QObject(page), key(storeKey) {
    mat = page->addChoice(label + QStringLiteral(": leder"),
                          {{QStringLiteral("cu"), QStringLiteral("Kobber (Cu)")},
                           {QStringLiteral("al"), QStringLiteral("Aluminium (Al)")}});
    std::vector<std::pair<QString, QString>> sizes;
    for (double q : fl::crossSections())
        sizes.emplace_back(sectionData(q), QString::fromStdString(fl::fmtNumber(q)) + QStringLiteral(" mm²"));
    mm2 = page->addChoice(label + QStringLiteral(": tværsnit"), sizes);
    if (withType) {
        std::vector<std::pair<QString, QString>> types;
        for (const fl::CableType& t : fl::cableTypes())
            types.emplace_back(QString::fromStdString(t.key), QString::fromStdString(t.label));
        kind = page->addChoice(label + QStringLiteral(": kabeltype"), types);
    }

    const DataStore& store = DataStore::instance();
    const std::string k = key.toStdString();
    select(mat, QString::fromStdString(store.getString(k + "_mat", "cu")));
    if (!select(mm2, QString::fromStdString(store.getString(k + "_q"))))
        select(mm2, sectionData(defaultMm2));
    if (kind && !select(kind, QString::fromStdString(store.getString(k + "_type")))) select(kind, defaultType);

    for (QComboBox* c : {mat, mm2, kind})
        if (c) connect(c, &QComboBox::currentIndexChanged, this, &CablePick::apply);
}

void CablePick::bind(ValueField* r, ValueField* x) {
    rField = r;
    xField = x;
    if ((r && r->text().isEmpty()) || (x && x->text().isEmpty())) apply();
}

void CablePick::apply() {
    DataStore& store = DataStore::instance();
    const std::string k = key.toStdString();
    store.set(k + "_mat", mat->currentData().toString().toStdString());
    store.set(k + "_q", mm2->currentData().toString().toStdString());
    if (kind) store.set(k + "_type", kind->currentData().toString().toStdString());

    const double q = fl::readValue(mm2->currentData().toString().toStdString());
    fill(rField, fl::cableResistance(mat->currentData().toString() == QLatin1String("al"), q),
         "findes ikke i tabellen – skriv værdien");
    if (kind) fill(xField, fl::cableReactance(kind->currentData().toString().toStdString(), q),
                   "findes ikke for denne kabeltype – skriv værdien");
}

} // namespace app
