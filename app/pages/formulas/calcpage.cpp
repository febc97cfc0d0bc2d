#include "app/pages/formulas/calcpage.h"

#include "app/widgets/calcpanel.h"
#include "app/shell/mainwindow.h"
#include "fl/formulas/lists.h"

#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace app {

CalcPage::CalcPage(MainWindow* w, QWidget* parent) : Page(parent), window(w) {
    const fl::Tile* tile = fl::findTile("calc");
    auto* heading = new QLabel(QString::fromStdString(tile ? tile->name : "Lommeregner"), inner);
    heading->setProperty("class", "h2");
    addWidget(heading);
    Card* card = addCard();
    calc = new CalcPanel(true, card);
    card->layout->addWidget(calc);
    connect(calc, &CalcPanel::finished, this, [this](const QString&, double value) {
        if (window) window->addResult(QStringLiteral("ans"), value, QString());
    });
}

void CalcPage::onEnter() { calc->lineEdit()->setFocus(); }

void CalcPage::onSettings() { calc->refresh(); }

void CalcPage::onTheme() { calc->refresh(); }

} // namespace app
