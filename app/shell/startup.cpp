// Start-up steps that touch files and the store. Nothing here shows a widget.
#include "app/shell/startup.h"

#include "app/shell/crash.h"
#include "app/shell/options.h"
#include "app/shell/theme.h"
#include "store/datastore.h"
#include "store/keys.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace app {

QString dataDirectory() {
    const QString dir = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    // A failed mkpath is not reported: saving then fails quietly and the
    // program runs on what is in memory.
    if (!dir.isEmpty()) QDir().mkpath(dir);
    return dir;
}

void migrateEarlierData(const QString& dataDir) {
    const QDir dir(dataDir);
    const QString target = dir.filePath("data.json");
    if (QFileInfo::exists(target)) return;
    // Earlier product names, newest first; only the first one found counts.
    for (const char* sibling : {"../Ostrovalden", "../Keldvarn"}) {
        const QString source = QDir(dir.absoluteFilePath(sibling)).filePath("data.json");
        if (!QFileInfo::exists(source)) continue;
        QFile::copy(source, target);
        return;
    }
}

QString startData() {
    const QString dir = dataDirectory();
    if (dir.isEmpty()) return dir; // nowhere to write: the store stays in memory
    migrateEarlierData(dir);
    setCrashFilePath(QDir::toNativeSeparators(dir + "/crash.txt").toStdString());
    DataStore& store = DataStore::instance();
    store.setPath(QDir(dir).filePath("data.json").toStdString());
    store.load(); // a missing or damaged file leaves the store empty
    store.set(key::UsageStarts, store.get(key::UsageStarts).asNumber(0) + 1);
    return dir;
}

QString damagedDataNotice() {
    const std::string& copy = DataStore::instance().damagedCopy();
    if (copy.empty()) return {};
    return QStringLiteral("Dine gemte data kunne ikke læses, så programmet er startet forfra uden dem. "
                          "Den gamle fil er gemt urørt som <b>%1</b> – den bliver ikke slettet.")
        .arg(QDir::toNativeSeparators(QString::fromStdString(copy)).toHtmlEscaped());
}

void loadSettings() {
    AppOptions& o = options();
    o.komma = storeGet(key::Komma).asBool(true);
    const Json rund = storeGet(key::Rund);
    o.rund = rund.isString() ? rund.str : "p5";
    o.trinvis = storeGet(key::Trinvis).asBool(false);
    applyDisplaySettings();
    setTextScale(storeGet(key::Tekst).asNumber(1.0));
    const std::string theme = storeGetString(key::Theme, "auto");
    setThemeMode(theme == "light" ? ThemeLight : theme == "dark" ? ThemeDark : ThemeAuto);
}

} // namespace app
