#include "app/pages/practice/statistikpage.h"

#include "app/sheet/sheetview.h"
#include "app/shell/locks.h"
#include "app/shell/pagehost.h"
#include "app/shell/theme.h"
#include "fl/practice/categories.h"
#include "fl/practice/statsheet.h"
#include "fl/practice/tekst.h"
#include "store/datastore.h"
#include "store/keys.h"

#include <QLayout>
#include <QMessageBox>
#include <QUrl>

namespace app {

namespace {

fl::BarColours barColours() {
    const ThemeColors& c = colors();
    return {c.ok, c.bad, c.line, c.muted};
}

// The topics the exercise page offers the student now.
std::vector<std::string> openTopics() {
    std::vector<std::string> out;
    for (const fl::PracticeCategory& c : fl::practiceCategories())
        if (!c.group.empty() && isOpenKey(c.lockKey)) out.push_back(c.key);
    return out;
}

} // namespace

StatistikPage::StatistikPage(PageHost* h, QWidget* parent) : Page(parent), host(h) {
    confirmReset = [this] {
        return QMessageBox::question(
                   this, QStringLiteral("Nulstil statistik"),
                   QStringLiteral("Vil du slette al din statistik? Det kan ikke fortrydes.")) ==
               QMessageBox::Yes;
    };
    sheet = new SheetView(inner);
    addWidget(sheet);
    connect(sheet, &SheetView::action, this, &StatistikPage::link);
}

std::string StatistikPage::recordsState() {
    std::string state =
        Json::dump(storeGet(key::OvStats)) + Json::dump(storeGet(key::ExamHist)) + fl::today();
    for (const std::string& topic : openTopics())
        state += "|" + topic;
    return state;
}

// A year of records takes a moment to lay out, so the sheet is written only
// when the page has its width, and again only when something has changed.
void StatistikPage::onEnter() {
    std::string state = recordsState();
    if (state == drawn) return;
    drawn = std::move(state);
    if (inner->layout()) inner->layout()->activate();
    sheet->setProvider([] {
        return fl::takeRender(
            fl::statsHtml(fl::loadStats(), fl::loadExams(), openTopics(), fl::today(), barColours()));
    });
}

void StatistikPage::link(const QString& href) {
    if (href.startsWith(QLatin1String("ov:"))) {
        // A topic with blanks or "æøå" may arrive percent-encoded.
        const std::string topic = QUrl::fromPercentEncoding(href.mid(3).toUtf8()).toStdString();
        // A text problem's scenario is practised where text problems are.
        static const std::string kTekst = fl::tekstLockKey("");
        if (topic.compare(0, kTekst.size(), kTekst) == 0) {
            storeSet(key::TxTpl, Json(topic.substr(kTekst.size())));
            if (host) host->navigate(QStringLiteral("tekstopgaver"));
            return;
        }
        storeSet(key::OvCat, Json(topic));
        if (host) host->navigate(QStringLiteral("ovelser"));
        return;
    }
    if (href == QLatin1String("act:streset")) {
        if (confirmReset && confirmReset()) {
            fl::resetStats();
            onEnter();
        }
        return;
    }
    if (host) host->openLink(href);
}

void StatistikPage::onSettings() {
    if (!drawn.empty()) sheet->refresh();
}

void StatistikPage::onTheme() {
    onSettings();
}

} // namespace app
