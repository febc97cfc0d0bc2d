// Moving a student's data: export and import through the page as a round
// trip, every kind of wrong file refused with nothing changed, the question
// and its "Nej", and the consent box.
#include "app/pages/support/datapage.h"

#include "store/keys.h"
#include "tests/app/fresh_app.h"

#include <QCheckBox>
#include <QFile>
#include <QLabel>

namespace {

class DataPageTest : public FreshAppTest {
  protected:
    // A page whose dialogs answer from the fields below and are counted.
    std::unique_ptr<app::DataPage> makePage() {
        auto page = std::make_unique<app::DataPage>(nullptr);
        page->askSaveName = [this](const QString& proposed) {
            proposedName = proposed;
            return saveName;
        };
        page->askOpenName = [this](const QString&) { return openName; };
        page->confirm = [this](const QString& question) {
            questions << question;
            return answerYes;
        };
        page->inform = [this](const QString& text) { told << text; };
        page->restart = [this] { ++restarts; };
        return page;
    }

    // Every kind of value the store keeps is the store's own test; through
    // the page's file, nested data and letters beyond ASCII.
    void fillStore() {
        storeSet("ov_stats", Json::parse(R"({"topics":{"Ohms lov":{"right":7,"total":9}}})"));
        storeSet("student_name", Json("Åse Ærø"));
    }

    std::map<std::string, std::string> snapshot() const {
        std::map<std::string, std::string> out;
        for (const std::string& k : DataStore::instance().keys())
            out[k] = Json::dump(storeGet(k), 0);
        return out;
    }

    // Puts `content` in the file the open dialog names; no file for none.
    void offerFile(const QByteArray& content) {
        openName = dir.path() + "/in.json";
        QFile::remove(openName);
        if (content.isEmpty()) return;
        QFile f(openName);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly) && f.write(content) == content.size());
    }

    QString fileText(const QString& path) const {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
    }

    QString saveName, openName, proposedName;
    bool answerYes = true;
    QStringList questions, told;
    int restarts = 0;
};

TEST_F(DataPageTest, exportThenImportOnAFreshFolderGivesTheSameStoreKeyForKey) {
    fillStore();
    const auto before = snapshot();
    auto page = makePage();
    saveName = dir.path() + "/eksport.json";
    page->exportData();
    EXPECT_TRUE(proposedName.endsWith(QStringLiteral("/Ostrovalden data ") +
                                      QDate::currentDate().toString(QStringLiteral("yyyy-MM-dd")) + ".json"))
        << proposedName.toStdString();
    EXPECT_EQ(page->status->text(),
              "✓ Gemt som <b>eksport.json</b>. Gem filen et sikkert sted – fx sammen med programmet.");

    QTemporaryDir other;
    DataStore::instance().resetForTest();
    DataStore::instance().setPath((other.path() + "/data.json").toStdString());
    storeSet("usage_starts", Json(1));
    auto fresh = makePage();
    openName = saveName;
    fresh->importData();
    ASSERT_EQ(questions.size(), 1);
    EXPECT_TRUE(questions[0].startsWith("Dine nuværende data (statistik, formelkort, eksamener, kredsløb og "
                                        "indstillinger) bliver erstattet af dem i filen fra "));
    EXPECT_EQ(told, QStringList{"Dine data er hentet. Programmet starter forfra, så alt bliver vist."});
    EXPECT_EQ(restarts, 1);
    EXPECT_EQ(snapshot(), before);
}

// Refused files, a "Nej" to the question, an export that can't be written and
// cancelled dialogs: each says why, or nothing, and the store and its file stay
// as they were.
TEST_F(DataPageTest, refusalsNoAndCancelledDialogsChangeNothing) {
    fillStore();
    const auto before = snapshot();
    const QString onDisk = fileText(dir.path() + "/data.json");
    const QByteArray good = QByteArray::fromStdString(DataStore::instance().exportText());
    auto page = makePage();
    // What the store refuses (another program, no object of data, no JSON) it
    // refuses alike; one such file here.
    offerFile(good.left(good.size() / 2));
    page->importData();
    EXPECT_EQ(page->status->text(),
              "<span style=\"color:#c62828\">Det er ikke en datafil fra Ostrovalden.</span>");
    offerFile({});
    page->importData();
    EXPECT_EQ(page->status->text(), "<span style=\"color:#c62828\">Filen kunne ikke læses.</span>");
    EXPECT_TRUE(questions.isEmpty());

    // A "saved" shorter than 10 characters is shown as it stands.
    offerFile(R"({"app":"Ostrovalden","data":{"fs_komma":"true"},"saved":"5.3.26"})");
    answerYes = false;
    page->importData();
    ASSERT_EQ(questions.size(), 1);
    EXPECT_TRUE(questions[0].endsWith("filen fra 5.3.26. Fortsæt?")) << questions[0].toStdString();

    saveName = dir.path() + "/ingen/mappe/data.json";
    page->exportData();
    EXPECT_EQ(page->status->text(), "<span style=\"color:#c62828\">Filen kunne ikke gemmes.</span>");
    EXPECT_FALSE(QFile::exists(saveName));

    auto quiet = makePage();
    openName.clear();
    saveName.clear();
    quiet->importData();
    quiet->exportData();
    EXPECT_EQ(questions.size(), 1);
    EXPECT_TRUE(quiet->status->isHidden());

    EXPECT_EQ(restarts, 0);
    EXPECT_TRUE(told.isEmpty());
    EXPECT_EQ(snapshot(), before);
    EXPECT_EQ(fileText(dir.path() + "/data.json"), onDisk);
}

// A good file padded with blanks (still valid JSON) is read up to the limit
// and refused one byte past it, before its text is looked at.
TEST_F(DataPageTest, aFileOneBytePastTheLimitIsRefused) {
    const QByteArray good = QByteArray::fromStdString(DataStore::instance().exportText());
    for (const qint64 size : {app::kMaxBundleBytes, app::kMaxBundleBytes + 1}) {
        offerFile(good + QByteArray(size - good.size(), ' '));
        const app::BundleFile read = app::readBundleFile(openName);
        EXPECT_EQ(read.ok, size == app::kMaxBundleBytes) << size;
        EXPECT_EQ(read.error,
                  read.ok ? QString() : QStringLiteral("Det er ikke en datafil fra Ostrovalden."));
    }
}

TEST_F(DataPageTest, theConsentBoxReadsAndWritesTelemetry) {
    auto page = makePage();
    EXPECT_FALSE(page->consent->isChecked());
    page->consent->setChecked(true);
    EXPECT_TRUE(storeGet(key::Telemetry).asBool(false));
    page->consent->setChecked(false);
    EXPECT_EQ(Json::dump(storeGet(key::Telemetry), 0), "false");
    storeSet(key::Telemetry, Json(true)); // e.g. from an imported file
    page->onEnter();
    EXPECT_TRUE(page->consent->isChecked());
}

} // namespace
