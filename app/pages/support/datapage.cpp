#include "app/pages/support/datapage.h"

#include "app/shell/pagehost.h"
#include "store/datastore.h"
#include "store/keys.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QSaveFile>
#include <QStandardPaths>

namespace app {

namespace {

const char* const kNotOurs = "Det er ikke en datafil fra Ostrovalden.";

QString documentsFolder() { return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation); }

} // namespace

QString exportFileName(const QString& documents, const QDate& today) {
    return documents + QStringLiteral("/Ostrovalden data ") + today.toString(QStringLiteral("yyyy-MM-dd")) +
           QStringLiteral(".json");
}

BundleFile readBundleFile(const QString& path) {
    BundleFile out;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        out.error = QStringLiteral("Filen kunne ikke læses.");
        return out;
    }
    // One byte past the limit tells a file that is too large from one that fits.
    const QByteArray bytes = file.read(kMaxBundleBytes + 1);
    if (file.error() != QFileDevice::NoError) {
        out.error = QStringLiteral("Filen kunne ikke læses.");
        return out;
    }
    if (bytes.size() > kMaxBundleBytes) {
        out.error = QString::fromUtf8(kNotOurs);
        return out;
    }
    out.text = bytes.toStdString();
    if (!DataStore::instance().validateBundle(out.text, &out.date, &out.count)) {
        out.error = QString::fromUtf8(kNotOurs);
        out.text.clear();
        return out;
    }
    out.ok = true;
    return out;
}

DataPage::DataPage(PageHost* h, QWidget* parent) : Page(parent), host(h) {
    Card* card = addCard();
    card->addLabel(QStringLiteral("Gem og hent mine data"), QStringLiteral("h2"));
    card->addLabel(QStringLiteral(
        "Alt, hvad programmet husker om dig – statistik, formelkort, eksamener, gemte kredsløb og indstillinger – "
        "kan gemmes i én fil. Tag filen med på en USB-nøgle, eller gem den i skyen, og hent den på en anden "
        "computer, så fortsætter du dér, hvor du slap. Filen er også en god sikkerhedskopi."));
    QHBoxLayout* row = card->addButtonRow();
    exportButton = card->addButton(row, QStringLiteral("Gem mine data i en fil"), QStringLiteral("primary"));
    importButton = card->addButton(row, QStringLiteral("Hent data fra en fil"));
    status = card->addLabel(QString());
    status->setTextFormat(Qt::RichText);
    status->setTextInteractionFlags(Qt::TextSelectableByMouse);
    status->hide();

    Card* privacy = addCard();
    privacy->addTitle(QStringLiteral("Anonym statistik"));
    consent = new QCheckBox(QStringLiteral("Send anonym brugsstatistik og nedbrudsrapporter"));
    privacy->layout->addWidget(consent);
    privacy->addLabel(QStringLiteral("Hvis du siger ja, fortæller programmet ved start, hvor mange gange hver side "
                                     "er brugt, og sender en teknisk rapport, hvis programmet er gået ned. Der "
                                     "sendes ikke navn, svar, resultater eller andet om dig."),
                      QStringLiteral("hint"));

    askSaveName = [this](const QString& proposed) {
        return QFileDialog::getSaveFileName(this, QStringLiteral("Gem mine data"), proposed,
                                            QStringLiteral("JSON (*.json)"));
    };
    askOpenName = [this](const QString& folder) {
        return QFileDialog::getOpenFileName(this, QStringLiteral("Hent data"), folder, QStringLiteral("JSON (*.json)"));
    };
    confirm = [this](const QString& question) {
        QMessageBox box(QMessageBox::Question, QStringLiteral("Hent data"), question, QMessageBox::NoButton, this);
        QPushButton* yes = box.addButton(QStringLiteral("Ja"), QMessageBox::YesRole);
        QPushButton* no = box.addButton(QStringLiteral("Nej"), QMessageBox::NoRole);
        box.setDefaultButton(no);
        box.setEscapeButton(no);
        box.exec();
        return box.clickedButton() == yes;
    };
    inform = [this](const QString& text) {
        QMessageBox::information(this, QStringLiteral("Hent data"), text);
    };
    restart = [] {
        QProcess::startDetached(QCoreApplication::applicationFilePath(), {});
        QCoreApplication::quit();
    };

    connect(exportButton, &QPushButton::clicked, this, &DataPage::exportData);
    connect(importButton, &QPushButton::clicked, this, &DataPage::importData);
    connect(consent, &QCheckBox::toggled, this, [](bool on) {
        if (storeGet(key::Telemetry).asBool(false) != on) storeSet(key::Telemetry, Json(on));
    });
    onEnter();
}

void DataPage::onEnter() {
    const QSignalBlocker quiet(consent);
    consent->setChecked(storeGet(key::Telemetry).asBool(false));
}

void DataPage::showStatus(const QString& html, bool bad) {
    status->setText(bad ? QStringLiteral("<span style=\"color:#c62828\">") + html + QStringLiteral("</span>") : html);
    status->show();
}

void DataPage::exportData() {
    const QString name = askSaveName(exportFileName(documentsFolder(), QDate::currentDate()));
    if (name.isEmpty()) return;
    // Written beside and moved over, so a failed write never leaves half a file.
    QSaveFile file(name);
    const std::string text = DataStore::instance().exportText();
    if (!file.open(QIODevice::WriteOnly) || file.write(text.data(), qint64(text.size())) != qint64(text.size()) ||
        !file.commit()) {
        showStatus(QStringLiteral("Filen kunne ikke gemmes."), true);
        return;
    }
    showStatus(QStringLiteral("✓ Gemt som <b>") + QFileInfo(name).fileName().toHtmlEscaped() +
                   QStringLiteral("</b>. Gem filen et sikkert sted – fx sammen med programmet."),
               false);
}

void DataPage::importData() {
    const QString name = askOpenName(documentsFolder());
    if (name.isEmpty()) return;
    const BundleFile bundle = readBundleFile(name);
    if (!bundle.ok) {
        showStatus(bundle.error, true);
        return;
    }
    const QString question =
        QStringLiteral("Dine nuværende data (statistik, formelkort, eksamener, kredsløb og indstillinger) bliver "
                       "erstattet af dem i filen fra ") +
        QString::fromStdString(bundle.date) + QStringLiteral(". Fortsæt?");
    if (!confirm(question)) return;
    DataStore& store = DataStore::instance();
    std::string date;
    if (!store.importBundle(bundle.text, &date)) {
        showStatus(QString::fromUtf8(kNotOurs), true);
        return;
    }
    // Restarting now would drop what only memory holds.
    if (!store.save()) {
        showStatus(QStringLiteral("Dataene er hentet, men kunne ikke gemmes på computeren. Luk ikke programmet – "
                                  "tjek, at der er plads på disken, og prøv igen."),
                   true);
        return;
    }
    inform(QStringLiteral("Dine data er hentet. Programmet starter forfra, så alt bliver vist."));
    restart();
}

} // namespace app
