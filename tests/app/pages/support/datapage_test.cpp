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

    void fillStore() {
        storeSet("ov_stats", Json::parse(R"({"topics":{"Ohms lov":{"right":7,"total":9}},"days":{"2026-03-05":{"right":7,"wrong":2}}})"));
        storeSet("fc", Json::parse(R"({"ohm":{"box":3,"due":"2026-03-08"},"effekt":{"box":1,"due":"2026-03-06"}})"));
        storeSet("exam_hist", Json::parse(R"([{"date":"2026-03-01","topic":"Alle","right":8,"total":10,"seconds":612}])"));
        storeSet("kreds_saved", Json::parse(R"({"Opgave 3":{"kind":"S","ac":false,"children":[{"kind":"R","name":"R1","R":"100"}]}})"));
        storeSet("komma", Json(false));
        storeSet("theme", Json("dark"));
        storeSet("student_name", Json("Åse Ærø"));
        storeSet("telemetry", Json(true));
    }

    std::map<std::string, std::string> snapshot() const {
        std::map<std::string, std::string> out;
        for (const std::string& k : DataStore::instance().keys()) out[k] = Json::dump(storeGet(k), 0);
        return out;
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
    EXPECT_EQ(page->status->text(), "✓ Gemt som <b>eksport.json</b>. Gem filen et sikkert sted – fx sammen med "
                                    "programmet.");

    // Another computer: an empty data folder.
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
    EXPECT_TRUE(questions[0].endsWith(". Fortsæt?"));
    EXPECT_EQ(told, QStringList{"Dine data er hentet. Programmet starter forfra, så alt bliver vist."});
    EXPECT_EQ(restarts, 1);
    EXPECT_EQ(snapshot(), before);
    // What the restarted program will read: the file on the new computer.
    DataStore::instance().resetForTest();
    DataStore::instance().setPath((other.path() + "/data.json").toStdString());
    ASSERT_TRUE(DataStore::instance().load());
    EXPECT_EQ(snapshot(), before);
}

struct Refusal {
    const char* name;
    QByteArray content; // empty: no file at all
    qint64 size;         // > 0: a file of this many zero bytes instead
    const char* status;
};

TEST_F(DataPageTest, wrongFilesAreRefusedAndNothingChanges) {
    fillStore();
    const auto before = snapshot();
    const QString onDisk = fileText(dir.path() + "/data.json");
    QByteArray good = QByteArray::fromStdString(DataStore::instance().exportText());
    const char* notOurs = "<span style=\"color:#c62828\">Det er ikke en datafil fra Ostrovalden.</span>";
    const Refusal rows[] = {
        // What the store refuses (another program, no object of data, no JSON) it
        // refuses the same way; one such row here.
        {"a truncated file", good.left(good.size() / 2), 0, notOurs},
        {"a 100 MB file", {}, 100ll * 1024 * 1024, notOurs},
        {"no such file", {}, 0, "<span style=\"color:#c62828\">Filen kunne ikke læses.</span>"},
    };
    int n = 0;
    for (const Refusal& row : rows) {
        SCOPED_TRACE(row.name);
        questions.clear();
        openName = dir.path() + QStringLiteral("/in%1.json").arg(n++);
        QFile f(openName);
        if (!row.content.isEmpty() || row.size > 0) {
            ASSERT_TRUE(f.open(QIODevice::WriteOnly));
            if (row.size > 0) ASSERT_TRUE(f.resize(row.size)); // sparse: costs no disk
            else f.write(row.content);
            f.close();
        }
        auto page = makePage();
        page->importData();
        EXPECT_EQ(page->status->text(), QString::fromUtf8(row.status));
        EXPECT_TRUE(questions.isEmpty());
        EXPECT_EQ(restarts, 0);
        EXPECT_EQ(snapshot(), before);
        EXPECT_EQ(fileText(dir.path() + "/data.json"), onDisk);
        f.remove();
    }
}

TEST_F(DataPageTest, noAtTheQuestionAndCancelledDialogsChangeNothing) {
    fillStore();
    const auto before = snapshot();
    const QString onDisk = fileText(dir.path() + "/data.json");
    openName = dir.path() + "/kort.json";
    QFile f(openName);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    // A "saved" shorter than 10 characters is shown as it stands.
    f.write(R"({"app":"Ostrovalden","data":{"fs_komma":"true"},"saved":"5.3.26"})");
    f.close();
    answerYes = false;
    auto page = makePage();
    page->importData();
    ASSERT_EQ(questions.size(), 1);
    EXPECT_TRUE(questions[0].endsWith("filen fra 5.3.26. Fortsæt?")) << questions[0].toStdString();
    EXPECT_EQ(restarts, 0);
    EXPECT_TRUE(told.isEmpty());
    EXPECT_EQ(snapshot(), before);
    EXPECT_EQ(fileText(dir.path() + "/data.json"), onDisk);

    openName.clear();
    saveName.clear();
    page->importData();
    page->exportData();
    EXPECT_EQ(questions.size(), 1);
    EXPECT_TRUE(page->status->isHidden());
    EXPECT_EQ(snapshot(), before);
}

TEST_F(DataPageTest, anExportThatCantBeWrittenSaysSo) {
    auto page = makePage();
    saveName = dir.path() + "/ingen/mappe/data.json";
    page->exportData();
    EXPECT_EQ(page->status->text(), "<span style=\"color:#c62828\">Filen kunne ikke gemmes.</span>");
    EXPECT_FALSE(QFile::exists(saveName));
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
