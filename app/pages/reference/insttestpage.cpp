#include "app/pages/reference/insttestpage.h"

#include "app/pages/reference/installpage.h"
#include "app/sheet/sheetview.h"
#include "app/shell/pagehost.h"
#include "app/widgets/helpers.h"
#include "app/widgets/valuefield.h"
#include "fl/expr/markup.h"
#include "fl/formulas/lists.h"
#include "fl/formulas/routes.h"
#include "fl/glossary/insttest.h"
#include "store/datastore.h"
#include "store/keys.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QAbstractTextDocumentLayout>
#include <QTextBlock>

namespace app {

InstTestPage::InstTestPage(PageHost* h, QWidget* parent) : Page(parent), host(h) {
    const fl::Tile* tile = fl::findTile(fl::route::InstTest);
    auto* heading = new QLabel(QString::fromStdString(tile ? tile->name : "Test af installation"), inner);
    heading->setProperty("class", "h2");
    addWidget(heading);
    if (tile && !tile->subtitle.empty()) {
        auto* sub = new QLabel(QString::fromStdString(tile->subtitle), inner);
        sub->setProperty("class", "hint");
        sub->setWordWrap(true);
        addWidget(sub);
    }

    auto* row = new QWidget(inner);
    auto* rowLayout = new QHBoxLayout(row);
    rowLayout->setContentsMargins(0, 0, 0, 0);
    rowLayout->setSpacing(6);
    const std::pair<const char*, const char*> names[] = {{"hvad", "Hvad og hvorfor"},
                                                         {"saadan", "Sådan gør du"},
                                                         {"graenser", "Grænseværdier"},
                                                         {"beregn", "Beregn grænsen"}};
    for (const auto& [id, name] : names) {
        QPushButton* b = makeButton(QString::fromUtf8(name), row, QStringLiteral("chip"));
        const QString tabId = QString::fromUtf8(id);
        connect(b, &QPushButton::clicked, this, [this, tabId] { setTab(tabId); });
        rowLayout->addWidget(b);
        tabs.emplace_back(tabId, b);
    }
    rowLayout->addStretch(1);
    addWidget(row);

    sheet = new SheetView(inner);
    sheet->setStyleSheet(QStringLiteral("background: transparent;"));
    addWidget(sheet);
    connect(sheet, &SheetView::action, this, &InstTestPage::follow);

    calcCard = addCard();
    calcCard->addTitle(QStringLiteral("Automatsikring (TN-system)"));
    calcCard->addField("I_n", QStringLiteral("Sikringens mærkestrøm"), QStringLiteral("A"), QStringLiteral("16"));
    characteristic = new QComboBox(calcCard);
    characteristic->addItem(QStringLiteral("B (3–5 · Iₙ)"), QStringLiteral("B"));
    characteristic->addItem(QStringLiteral("C (5–10 · Iₙ)"), QStringLiteral("C"));
    characteristic->addItem(QStringLiteral("D (10–20 · Iₙ)"), QStringLiteral("D"));
    calcCard->addRow(QStringLiteral("Karakteristik"), characteristic);
    calcCard->addField("U_0", QStringLiteral("Spænding fase–jord"), QStringLiteral("V"), QStringLiteral("230"));
    calcCard->addField("Z_s", QStringLiteral("Målt sløjfeimpedans"), QStringLiteral("Ω"), QString(),
                       QStringLiteral("kan stå tom"));
    calcCard->addTitle(QStringLiteral("Fejlstrømsafbryder (TT-system)"));
    calcCard->addField("I_dn", QStringLiteral("RCD'ens mærkeudløserstrøm"), QStringLiteral("A"), QStringLiteral("30m"),
                       QStringLiteral("skriv 30m for 30 mA"));
    calcCard->addField("U_L", QStringLiteral("Tilladt berøringsspænding"), QStringLiteral("V"), QStringLiteral("50"),
                       QStringLiteral("25 V i landbrug"));
    calcCard->addField("R_A", QStringLiteral("Målt jordmodstand"), QStringLiteral("Ω"), QString(),
                       QStringLiteral("kan stå tom"));
    for (ValueField* f : calcCard->fields)
        connect(f->edit, &QLineEdit::textChanged, this, &InstTestPage::compute);
    connect(characteristic, &QComboBox::currentIndexChanged, this, &InstTestPage::compute);
    result = new SheetView(calcCard);
    calcCard->layout->addWidget(result);
    connect(result, &SheetView::action, this, &InstTestPage::follow);

    setTab(QString::fromStdString(storeGetString(key::InsttestTab, "hvad")));
}

void InstTestPage::setTab(const QString& tab) {
    current = tab;
    bool known = false;
    for (const auto& [id, b] : tabs) known = known || id == tab;
    if (!known) current = QStringLiteral("hvad");
    storeSet(key::InsttestTab, Json(current.toStdString()));
    for (const auto& [id, b] : tabs) {
        b->setProperty("sel", id == current);
        repolish(b);
    }
    calcCard->setVisible(current == QLatin1String("beregn"));
    draw();
    if (current == QLatin1String("beregn")) compute();
    scrollToTop();
}

void InstTestPage::draw() {
    const std::string tab = current.toStdString();
    sheet->setProvider([tab] { return fl::takeRender(fl::insttestHtml(tab)); });
}

void InstTestPage::compute() {
    // The field keys are the symbols shown; the calculator has its own names.
    const std::map<std::string, std::string> typed = calcCard->values();
    std::map<std::string, std::string> fields;
    for (const auto& [from, to] : std::map<std::string, std::string>{
             {"I_n", "In"}, {"U_0", "U0"}, {"Z_s", "Zs"}, {"I_dn", "Idn"}, {"U_L", "UL"}, {"R_A", "RA"}})
        if (auto it = typed.find(from); it != typed.end()) fields[to] = it->second;
    fields["kar"] = characteristic->currentData().toString().toStdString();
    result->setProvider([fields] { return fl::takeRender(fl::limitCalculatorHtml(fields)); });
}

void InstTestPage::scrollToAnchor(const QString& name) {
    // The document is as tall as its text; the page's scroll area does the scrolling.
    for (QTextBlock block = sheet->document()->begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            if (!it.fragment().charFormat().anchorNames().contains(name)) continue;
            const int y = int(sheet->document()->documentLayout()->blockBoundingRect(block).top());
            scrollToWidget(sheet->mapTo(inner, QPoint(0, y)).y());
            return;
        }
    }
}

void InstTestPage::follow(const QString& href) {
    if (href.startsWith(QLatin1String("tab:"))) {
        setTab(href.mid(4));
    } else if (href.startsWith(QLatin1String("#"))) {
        scrollToAnchor(href.mid(1));
    } else if (href.startsWith(QLatin1String("cards:"))) {
        openInstallCards(host, href.mid(6));
    } else if (host) {
        host->openLink(href);
    }
}

void InstTestPage::onEnter() {
    // An "it:" link from elsewhere asks for the first tab through the store.
    const QString wanted = QString::fromStdString(storeGetString(key::InsttestTab, "hvad"));
    if (wanted != current)
        setTab(wanted);
    else
        draw();
}

void InstTestPage::onSettings() {
    draw();
    compute();
}

void InstTestPage::onTheme() { onSettings(); }

} // namespace app
