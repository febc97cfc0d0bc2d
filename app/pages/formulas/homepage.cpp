#include "app/pages/formulas/homepage.h"

#include "app/sheet/sheettext.h"
#include "app/sheet/sheetview.h"
#include "app/shell/locks.h"
#include "app/shell/options.h"
#include "app/shell/pagehost.h"
#include "app/shell/theme.h"
#include "store/datastore.h"
#include "store/keys.h"

namespace app {

fl::TileLook tileLook() {
    const ThemeColors& c = colors();
    return {c.panel, c.line, c.text, c.accent};
}

fl::OpenRoute openRoutes() {
    return [](const std::string& route) { return isOpen(route); };
}

// The sheet stands on the page's own background, so that the tiles read as
// cards lying on it. A formula on a tile keeps the text colour, though the
// whole tile is a link; a heading's small remark isn't bold.
QString tilePageCss() {
    const ThemeColors& c = colors();
    return QStringLiteral("\nbody { background-color: %1; }\ntd.tile .eq { color: %2; }\n.h3 .crumb { "
                          "font-weight: normal; }\n")
        .arg(qstr(c.bg), qstr(c.text));
}

HomePage::HomePage(PageHost* h, QWidget* parent) : Page(parent), host(h) {
    sheet = new SheetView(inner);
    sheet->setStyleSheet(QStringLiteral("background: transparent;"));
    addWidget(sheet);
    connect(sheet, &SheetView::action, this, [this](const QString& href) {
        if (host) host->openLink(href);
    });
}

fl::RenderResult HomePage::render() {
    fl::HomeState s;
    const Json recent = storeGet(key::Recent);
    for (const Json& entry : recent.asArray())
        if (entry.isString()) s.recent.push_back(entry.str);
    s.open = openRoutes();
    s.somethingOff = !options().off.empty();
    s.profileLabel = profileLabel(options().profile).toStdString();
    s.look = tileLook();
    fl::RenderResult r = fl::takeRender(fl::homeMarkup(s));
    r.html = holdChipsTogether(QString::fromStdString(r.html)).toStdString();
    return r;
}

void HomePage::onEnter() {
    sheet->setExtraCss(tilePageCss());
    sheet->setProvider(&HomePage::render);
}

void HomePage::onSettings() {
    onEnter();
}

void HomePage::onTheme() {
    onEnter();
}

} // namespace app
