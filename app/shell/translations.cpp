#include "app/shell/translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace app {

bool installTranslations() {
    // "qt_da" brings in qtbase_da, which holds the dialogs and buttons.
    auto* qt = new QTranslator(QCoreApplication::instance());
    const bool found = qt->load(QLocale(QLocale::Danish, QLocale::Denmark), QStringLiteral("qt"),
                                QStringLiteral("_"), QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    if (!found) {
        delete qt;
        return false;
    }
    QCoreApplication::installTranslator(qt);
    return true;
}

} // namespace app
