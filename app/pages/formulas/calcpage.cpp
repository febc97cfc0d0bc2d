#include "app/pages/formulas/calcpage.h"

#include "app/shell/pagehost.h"
#include "app/widgets/calcpanel.h"
#include "fl/formulas/lists.h"
#include "fl/formulas/routes.h"

#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace app {

CalcPage::CalcPage(PageHost* h, QWidget* parent) : Page(parent), host(h) {
    const fl::Tile* tile = fl::findTile(fl::route::Calc);
    auto* heading = new QLabel(QString::fromStdString(tile ? tile->name : "Lommeregner"), inner);
    heading->setProperty("class", "h2");
    addWidget(heading);
    Card* card = addCard();
    calc = new CalcPanel(true, card);
    card->layout->addWidget(calc);
    connect(calc, &CalcPanel::finished, this, [this](const QString&, double value) {
        if (host) host->addResult(QStringLiteral("ans"), value, QString());
    });
}

void CalcPage::onEnter() { calc->lineEdit()->setFocus(); }

void CalcPage::onSettings() { calc->refresh(); }

void CalcPage::onTheme() { calc->refresh(); }

} // namespace app
