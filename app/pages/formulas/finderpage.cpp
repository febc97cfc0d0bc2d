#include "app/pages/formulas/finderpage.h"

#include "app/pages/formulas/homepage.h"
#include "app/sheet/sheettext.h"
#include "app/sheet/sheetview.h"
#include "app/shell/options.h"
#include "app/shell/pagehost.h"
#include "app/widgets/helpers.h"
#include "fl/formulas/catalogue.h"
#include "fl/formulas/finderview.h"
#include "fl/formulas/lists.h"
#include "store/datastore.h"
#include "store/keys.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace app {

FinderPage::FinderPage(int mode_, PageHost* h, QWidget* parent) : Page(parent), mode(mode_), host(h) {
    if (const fl::Tile* tile = fl::findTile(mode == fl::FinderCalculators ? "udregnere" : "finder")) {
        auto* heading = new QLabel(QString::fromStdString(tile->name), inner);
        heading->setProperty("class", "h2");
        addWidget(heading);
        auto* about = new QLabel(QString::fromStdString(tile->subtitle), inner);
        about->setProperty("class", "hint");
        about->setWordWrap(true);
        addWidget(about);
    }
    pathRow = new QWidget(inner);
    pathLayout = new QHBoxLayout(pathRow);
    pathLayout->setContentsMargins(0, 0, 0, 0);
    pathLayout->setSpacing(6);
    addWidget(pathRow);

    sheet = new SheetView(inner);
    sheet->setStyleSheet(QStringLiteral("background: transparent;"));
    addWidget(sheet);
    connect(sheet, &SheetView::action, this, &FinderPage::follow);
}

std::string FinderPage::storeKey() const {
    return mode == fl::FinderCalculators ? key::CalculatorsPath : key::FinderPath;
}

void FinderPage::follow(const QString& href) {
    if (!href.startsWith(QLatin1String("fm:"))) {
        if (host) host->openLink(href);
        return;
    }
    const std::string target = href.mid(3).toStdString();
    // A formula's key rather than a subject opens the formula.
    if (!fl::findNode(target) && fl::findFormula(target) && host) {
        host->navigate(QString::fromStdString(target));
        return;
    }
    setPath(target);
}

void FinderPage::setPath(const std::string& path) {
    current = path;
    storeSet(storeKey(), Json(path));
    rebuildPathRow();
    draw();
    scrollToTop();
}

void FinderPage::rebuildPathRow() {
    buttons.clear();
    while (QLayoutItem* item = pathLayout->takeAt(0)) {
        if (QWidget* w = item->widget()) {
            w->hide();
            w->deleteLater();
        }
        delete item;
    }

    auto add = [this](const QString& text, const std::string& target) {
        QPushButton* b = makeButton(text, pathRow, QStringLiteral("chip"));
        connect(b, &QPushButton::clicked, this, [this, target] { setPath(target); });
        pathLayout->addWidget(b);
        buttons.push_back(b);
        return b;
    };
    if (!current.empty()) add(QStringLiteral("← Tilbage"), fl::parentPath(current));
    QPushButton* last = add(QStringLiteral("Alle emner"), std::string());

    std::string walked;
    size_t start = 0;
    while (start < current.size()) {
        size_t slash = current.find('/', start);
        if (slash == std::string::npos) slash = current.size();
        walked = current.substr(0, slash);
        const fl::FinderNode* node = fl::findNode(walked);
        auto* sep = new QLabel(QStringLiteral("›"), pathRow);
        sep->setProperty("class", "crumb");
        pathLayout->addWidget(sep);
        last = add(QString::fromStdString(node ? node->title : current.substr(start, slash - start)), walked);
        start = slash + 1;
    }
    last->setProperty("sel", true);
    pathLayout->addStretch(1);
}

std::string FinderPage::viewState(const std::string& path) const {
    std::string state = path + "\n" + options().profile;
    for (const std::string& id : options().off)
        state += "\n" + id;
    return state;
}

void FinderPage::draw() {
    drawnFor = viewState(current);
    sheet->setExtraCss(tilePageCss());
    sheet->setProvider([this] {
        fl::FinderState s;
        s.path = current;
        s.mode = mode;
        s.open = openRoutes();
        s.look = tileLook();
        fl::RenderResult r = fl::takeRender(fl::finderMarkup(s));
        r.html = holdChipsTogether(QString::fromStdString(r.html)).toStdString();
        return r;
    });
}

void FinderPage::onEnter() {
    // A large subject takes a moment to lay out: coming back to the same
    // view with nothing switched on or off since keeps what is drawn.
    const std::string stored = storeGetString(storeKey());
    if (viewState(stored) == drawnFor && sheet->hasContent()) return;
    current = stored;
    rebuildPathRow();
    draw();
}

void FinderPage::onSettings() {
    draw();
}

void FinderPage::onTheme() {
    draw();
}

} // namespace app
