#include "app/shell/lockedpage.h"

#include "app/shell/locks.h"
#include "app/shell/options.h"
#include "app/shell/pagehost.h"
#include "fl/formulas/routes.h"
#include "store/datastore.h"
#include "store/keys.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace app {

QString lockedText(const std::string& topicId, const std::string& profile) {
    QString name = topicName(topicId);
    if (name.isEmpty()) name = QStringLiteral("Denne funktion");
    QString html = "<b>" + name.toHtmlEscaped() + "</b> er slået fra for skolen";
    const QString label = profileLabel(profile);
    if (!label.isEmpty()) html += " (profil: " + label + ")";
    html += QStringLiteral(".<br><br>Det er din lærer, der bestemmer, hvilke dele af programmet der er åbne – fx "
                           "under en prøve. Funktionen kommer tilbage, når læreren slår den til igen, og du trykker "
                           "»Opdatér« øverst til højre (eller genstarter programmet). Programmet er ikke i stykker.");
    return html;
}

LockedPage::LockedPage(PageHost* h, QWidget* parent) : Page(parent), host(h) {
    Card* card = addCard();
    QLabel* heading = card->addLabel(QStringLiteral("Slået fra af din lærer"), "h2");
    heading->setWordWrap(true);
    text = card->addLabel(QString());
    QHBoxLayout* row = card->addButtonRow();
    QPushButton* home = card->addButton(row, QStringLiteral("Til forsiden"), "primary");
    connect(home, &QPushButton::clicked, this, [this] {
        if (host) host->navigate(QLatin1String(fl::route::Home));
    });
}

void LockedPage::onEnter() {
    text->setText(lockedText(storeGetString(key::LockedFeature), options().profile));
}

}  // namespace app
