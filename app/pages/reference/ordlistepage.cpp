#include "app/pages/reference/ordlistepage.h"

#include "app/sheet/sheetview.h"
#include "app/shell/locks.h"
#include "app/shell/pagehost.h"
#include "app/widgets/helpers.h"
#include "fl/expr/markup.h"
#include "fl/formulas/lists.h"
#include "fl/formulas/routes.h"
#include "fl/glossary/glossary.h"
#include "store/datastore.h"
#include "store/keys.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QUrl>

namespace app {

namespace {

fl::KeyOpen openKeys() {
    return [](const std::string& key) { return isOpenKey(key); };
}

} // namespace

OrdlistePage::OrdlistePage(PageHost* h, QWidget* parent) : Page(parent), host(h) {
    const fl::Tile* tile = fl::findTile(fl::route::Glossary);
    auto* heading = new QLabel(QString::fromStdString(tile ? tile->name : "Ordliste"), inner);
    heading->setProperty("class", "h2");
    addWidget(heading);
    auto* hint = new QLabel(QStringLiteral("Fagets ord forklaret med almindelige ord – med symbol, enhed, formel og "
                                           "eksempler fra hverdagen. Søg, eller vælg et emne."),
                            inner);
    hint->setProperty("class", "hint");
    hint->setWordWrap(true);
    addWidget(hint);

    search = new QLineEdit(inner);
    search->setPlaceholderText(QStringLiteral("Søg i ordlisten, fx spændingsfald"));
    search->setClearButtonEnabled(true);
    addWidget(search);
    connect(search, &QLineEdit::textChanged, this, [this](const QString& text) {
        entry.clear();
        storeSet(key::OrdlisteQ, Json(text.toStdString()));
        draw();
    });

    sectionRow = new QWidget(inner);
    sectionLayout = new QHBoxLayout(sectionRow);
    sectionLayout->setContentsMargins(0, 0, 0, 0);
    sectionLayout->setSpacing(6);
    addWidget(sectionRow);

    sheet = new SheetView(inner);
    sheet->setStyleSheet(QStringLiteral("background: transparent;"));
    addWidget(sheet);
    connect(sheet, &SheetView::action, this, &OrdlistePage::follow);

    current = QString::fromStdString(storeGetString(key::OrdlisteSec, fl::glossarySections().front()));
    rebuildSections();
}

void OrdlistePage::rebuildSections() {
    buttons.clear();
    while (QLayoutItem* item = sectionLayout->takeAt(0)) {
        if (QWidget* w = item->widget()) {
            w->hide();
            w->deleteLater();
        }
        delete item;
    }
    const std::vector<std::string> open = fl::openGlossarySections(openKeys());
    if (!open.empty() && std::find(open.begin(), open.end(), current.toStdString()) == open.end())
        current = QString::fromStdString(open.front());
    for (const std::string& s : open) {
        const QString name = QString::fromStdString(s);
        QPushButton* b = makeButton(name, sectionRow, QStringLiteral("chip"));
        b->setProperty("sel", name == current && search->text().trimmed().isEmpty() && entry.isEmpty());
        connect(b, &QPushButton::clicked, this, [this, name] { setSection(name); });
        sectionLayout->addWidget(b);
        buttons.push_back(b);
    }
    sectionLayout->addStretch(1);
}

void OrdlistePage::setSection(const QString& section) {
    current = section;
    entry.clear();
    storeSet(key::OrdlisteSec, Json(section.toStdString()));
    if (!search->text().isEmpty())
        search->clear(); // draws through textChanged
    else
        draw();
    scrollToTop();
}

void OrdlistePage::openEntry(const QString& key) {
    entry = key;
    draw();
    scrollToTop();
}

void OrdlistePage::draw() {
    for (QPushButton* b : buttons) {
        b->setProperty("sel", b->text() == current && search->text().trimmed().isEmpty() && entry.isEmpty());
        repolish(b);
    }
    const std::string key = entry.toStdString();
    const std::string query = search->text().toStdString();
    const std::string section = current.toStdString();
    sheet->setProvider([key, query, section] {
        if (!key.empty())
            return fl::takeRender(fl::glossaryEntryHtml(key, openKeys()) +
                                  "<p><a href=\"gl:\">← Tilbage til ordlisten</a></p>");
        return fl::takeRender(fl::glossaryHtml(query, section, openKeys()));
    });
}

void OrdlistePage::follow(const QString& href) {
    const QString decoded = QUrl::fromPercentEncoding(href.toUtf8());
    if (decoded.startsWith(QLatin1String("gls:"))) {
        openEntry(decoded.mid(4));
    } else if (decoded.startsWith(QLatin1String("gl:"))) {
        entry.clear();
        search->setText(decoded.mid(3));
        draw();
    } else if (decoded.startsWith(QLatin1String("fm:"))) {
        if (host) host->navigate(decoded.mid(3));
    } else if (host) {
        host->openLink(href);
    }
}

void OrdlistePage::onEnter() {
    // A "gl:" link from elsewhere left its text in the store.
    const QString wanted = QString::fromStdString(storeGetString(key::OrdlisteQ));
    rebuildSections();
    if (wanted != search->text())
        search->setText(wanted);
    else
        draw();
}

void OrdlistePage::onSettings() { draw(); }

void OrdlistePage::onTheme() { draw(); }

} // namespace app
