#include "app/pages/reference/installpage.h"

#include "app/sheet/sheetview.h"
#include "app/shell/pagehost.h"
#include "app/shell/theme.h"
#include "app/widgets/helpers.h"
#include "fl/expr/markup.h"
#include "fl/formulas/lists.h"
#include "fl/formulas/routes.h"
#include "fl/glossary/install.h"
#include "store/datastore.h"
#include "store/keys.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace app {

void openInstallCards(PageHost* host, const QString& deck) {
    Json opt = storeGet(key::FcOpt);
    if (!opt.isObject()) opt = Json::object();
    opt["deck"] = Json("inst:" + deck.toStdString());
    opt["mode"] = Json("nf");
    storeSet(key::FcOpt, opt);
    if (host) host->navigate(QLatin1String(fl::route::Flashcards));
}

InstallPage::InstallPage(PageHost* h, QWidget* parent) : Page(parent), host(h) {
    const fl::Tile* tile = fl::findTile(fl::route::Install);
    auto* heading = new QLabel(QString::fromStdString(tile ? tile->name : "Installation"), inner);
    heading->setProperty("class", "h2");
    heading->setWordWrap(true);
    addWidget(heading);

    auto* row = new QWidget(inner);
    auto* rowLayout = new QHBoxLayout(row);
    rowLayout->setContentsMargins(0, 0, 0, 0);
    rowLayout->setSpacing(6);
    const std::pair<const char*, const char*> names[] = {
        {"farver", "Ledningsfarver"}, {"ip", "IP-koder"}, {"symboler", "Symboler"}, {"poe", "PoE"}};
    for (const auto& [id, name] : names) {
        QPushButton* b = makeButton(QString::fromUtf8(name), row, QStringLiteral("chip"));
        const QString tabId = QString::fromUtf8(id);
        connect(b, &QPushButton::clicked, this, [this, tabId] { setTab(tabId); });
        rowLayout->addWidget(b);
        tabs.emplace_back(tabId, b);
    }
    rowLayout->addStretch(1);
    addWidget(row);

    ipRow = new QWidget(inner);
    auto* ipLayout = new QHBoxLayout(ipRow);
    ipLayout->setContentsMargins(0, 0, 0, 0);
    auto* label = new QLabel(QStringLiteral("Skriv en IP-kode:"), ipRow);
    ipLayout->addWidget(label);
    ip = new QLineEdit(ipRow);
    ip->setPlaceholderText(QStringLiteral("fx IP44"));
    ip->setMaximumWidth(160);
    ip->setClearButtonEnabled(true);
    ipLayout->addWidget(ip);
    ipLayout->addStretch(1);
    addWidget(ipRow);
    connect(ip, &QLineEdit::textChanged, this, [this](const QString& text) {
        storeSet(key::InstIp, Json(text.toStdString()));
        draw();
    });

    sheet = new SheetView(inner);
    sheet->setStyleSheet(QStringLiteral("background: transparent;"));
    addWidget(sheet);
    connect(sheet, &SheetView::action, this, &InstallPage::follow);

    ip->setText(QString::fromStdString(storeGetString(key::InstIp)));
    setTab(QString::fromStdString(storeGetString(key::InstTab, "farver")));
}

void InstallPage::setTab(const QString& tab) {
    current = tab;
    bool known = false;
    for (const auto& [id, b] : tabs) known = known || id == tab;
    if (!known) current = QStringLiteral("farver");
    storeSet(key::InstTab, Json(current.toStdString()));
    for (const auto& [id, b] : tabs) {
        b->setProperty("sel", id == current);
        repolish(b);
    }
    ipRow->setVisible(current == QLatin1String("ip"));
    draw();
    scrollToTop();
}

void InstallPage::draw() {
    const std::string tab = current.toStdString(), code = ip->text().toStdString(), ink = colors().text;
    sheet->setProvider([tab, code, ink] { return fl::takeRender(fl::installHtml(tab, code, ink)); });
}

void InstallPage::follow(const QString& href) {
    if (href.startsWith(QLatin1String("ip:"))) {
        ip->setText(href.mid(3));
        scrollToTop();
    } else if (href.startsWith(QLatin1String("cards:"))) {
        openInstallCards(host, href.mid(6));
    } else if (host) {
        host->openLink(href);
    }
}

void InstallPage::onEnter() { draw(); }

void InstallPage::onSettings() { draw(); }

void InstallPage::onTheme() { draw(); }

} // namespace app
