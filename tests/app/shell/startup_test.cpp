// Start-up against a temporary home: the data directory, the migration of an
// earlier installation, the first save, the stored settings; and the crash
// record, written by child processes that crash on purpose.
#include "app/shell/crash.h"
#include "app/shell/options.h"
#include "app/shell/service.h"
#include "app/shell/startup.h"
#include "app/shell/theme.h"
#include "fl/expr/numbers.h"
#include "store/datastore.h"
#include "store/keys.h"
#include "tests/app/fresh_app.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QTemporaryDir>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <optional>
#include <regex>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

std::string readText(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) return {};
    return f.readAll().toStdString();
}

void writeText(const QString& path, const std::string& text) {
    QDir().mkpath(QFileInfo(path).path());
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(text.data(), qint64(text.size()));
}

// A "data.json" whose only entry tells where it came from.
std::string documentFrom(const std::string& origin, const char* app = "Keldvarn") {
    return std::string(R"({"app":")") + app + R"(","data":{"fs_origin":"\")" + origin +
           R"(\"","fs_usage_starts":"4"},"saved":"2025-08-01T07:00:00.000Z","version":1})";
}

class StartupTest : public FreshAppTest {
  protected:
    void SetUp() override {
        FreshAppTest::SetUp();
        oldXdg = qgetenv("XDG_DATA_HOME");
        oldHome = qgetenv("HOME");
        qputenv("XDG_DATA_HOME", (dir.path() + "/share").toUtf8());
        qputenv("HOME", (dir.path() + "/home").toUtf8());
    }
    void TearDown() override {
        app::setCrashFilePath("");
        qputenv("XDG_DATA_HOME", oldXdg);
        qputenv("HOME", oldHome);
        FreshAppTest::TearDown();
    }

    QString share() const { return dir.path() + "/share"; }
    QString dataDir() const { return share() + "/Ostrovalden Skole"; }
    QString dataFile() const { return dataDir() + "/data.json"; }

    // What a fresh process would do: an empty store, then the start.
    void start() {
        DataStore::instance().resetForTest();
        app::startData();
    }

    // The saved file's "data" member, checked to be in the file form.
    Json savedData() {
        const Json doc = Json::parse(readText(dataFile()));
        EXPECT_EQ(doc.at("app"), Json("Keldvarn"));
        EXPECT_EQ(doc.at("version"), Json(1));
        return doc.at("data");
    }

    QByteArray oldXdg, oldHome;
};

// What the student sees of a damaged file: a fresh start, and the old bytes
// kept beside it under a name the window's notice gives. The next start reads
// the new file and says nothing more. Which damage counts, and that the copy
// is the old file byte for byte and made once, is the store's test.
TEST_F(StartupTest, damagedFileIsKeptAsADatedCopyAndTheStartGoesOnAfresh) {
    writeText(dataFile(), "\x01\x02 not json");
    start();
    EXPECT_EQ(Json::dump(savedData()), R"({"fs_usage_starts":"1"})");

    const QStringList copies = QDir(dataDir()).entryList({"data-beskadiget-*.json"}, QDir::Files);
    ASSERT_EQ(copies.size(), 1);
    const QString copy = QDir(dataDir()).filePath(copies[0]);
    const QString notice = app::damagedDataNotice();
    EXPECT_TRUE(notice.startsWith("Dine gemte data kunne ikke læses, så programmet er startet forfra"));
    EXPECT_TRUE(notice.contains("<b>" + QDir::toNativeSeparators(copy) + "</b>")) << notice.toStdString();
    window = std::make_unique<app::MainWindow>();
    EXPECT_EQ(window->noticeLabel()->text(), notice);

    start();
    EXPECT_EQ(app::damagedDataNotice(), "");
}

struct MigrationRow {
    const char* name;
    std::optional<std::string> ostrovalden; // "../Ostrovalden/data.json"
    std::optional<std::string> keldvarn;    // "../Keldvarn/data.json"
    std::optional<std::string> current;     // our own "data.json"
    std::optional<std::string> origin;      // where the loaded data came from
};

TEST_F(StartupTest, migrationTakesTheFirstEarlierFileUnlessThereIsOne) {
    const std::string fromO = documentFrom("ostrovalden", "Ostrovalden");
    const std::string fromK = documentFrom("keldvarn");
    const std::string own = documentFrom("own");
    EXPECT_EQ(app::dataDirectory(), dataDir());
    const MigrationRow rows[] = {
        {"nothing anywhere", std::nullopt, std::nullopt, std::nullopt, std::nullopt},
        {"only Keldvarn", std::nullopt, fromK, std::nullopt, "keldvarn"},
        {"Ostrovalden wins over Keldvarn", fromO, fromK, std::nullopt, "ostrovalden"},
        {"own file is never overwritten", fromO, fromK, own, "own"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        QDir(share()).removeRecursively();
        if (row.ostrovalden) writeText(share() + "/Ostrovalden/data.json", *row.ostrovalden);
        if (row.keldvarn) writeText(share() + "/Keldvarn/data.json", *row.keldvarn);
        if (row.current) writeText(dataFile(), *row.current);

        start();
        EXPECT_EQ(storeGetString("origin", "none"), row.origin.value_or("none"));
        // Saved in a directory of its own making; the copied count goes on
        // from where the earlier installation was.
        EXPECT_EQ(savedData().at("fs_usage_starts"), Json(row.origin ? "5" : "1"));
        // The earlier installations are only read.
        EXPECT_EQ(readText(share() + "/Ostrovalden/data.json"), row.ostrovalden.value_or(""));
        EXPECT_EQ(readText(share() + "/Keldvarn/data.json"), row.keldvarn.value_or(""));
    }
}

struct SettingsRow {
    const char* name;
    std::string entries; // the "data" member of the stored file
    bool komma;
    std::string rund;
    bool trinvis;
    double scale;
    int theme;
};

TEST_F(StartupTest, storedSettingsWithTheirFallbacks) {
    const SettingsRow rows[] = {
        {"nothing stored", "{}", true, "p5", false, 1.0, app::ThemeAuto},
        // A rounding code unknown here is carried as it stands.
        {"all set",
         R"({"fs_komma":"false","fs_rund":"\"x9\"","fs_trinvis":"true","fs_tekst":"1.25","fs_theme":"\"dark\""})",
         false, "x9", true, 1.25, app::ThemeDark},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        writeText(dataFile(), R"({"app":"Keldvarn","data":)" + row.entries + "}");
        start();
        const Json before = Json::parse(readText(dataFile())).at("data");
        app::loadSettings();
        EXPECT_EQ(app::options().komma, row.komma);
        EXPECT_EQ(app::options().rund, row.rund);
        EXPECT_EQ(app::options().trinvis, row.trinvis);
        EXPECT_DOUBLE_EQ(app::textScale(), row.scale);
        EXPECT_EQ(app::themeMode(), row.theme);
        EXPECT_EQ(fl::displaySettings().decimalComma, row.komma);
        EXPECT_EQ(fl::displaySettings().rounding, row.rund);
        EXPECT_EQ(fl::displaySettings().oneStepAtATime, row.trinvis);
        // Reading the settings never rewrites what the user chose.
        EXPECT_EQ(Json::parse(readText(dataFile())).at("data"), before);
    }
}

// --- The crash record -------------------------------------------------------

// Runs `crash` in a child process with the handler installed and the record
// going to `record`; returns the signal that ended the child (0 if none).
int crashInChild(const std::string& record, const std::function<void()>& crash) {
    const pid_t pid = fork();
    if (pid == 0) {
        const rlimit noCore{0, 0};
        setrlimit(RLIMIT_CORE, &noCore);
        app::installCrashHandler();
        app::setCrashFilePath(record);
        crash();
        _exit(0);
    }
    int status = 0;
    waitpid(pid, &status, 0);
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

[[gnu::noinline]] void writeToAddress(uintptr_t address) {
    *reinterpret_cast<volatile int*>(address) = 1;
}

[[gnu::noinline]] void throwUncaught() {
    throw std::runtime_error("ingen fanger mig");
}

volatile int quotient = 0;
[[gnu::noinline]] void divideBy(int divisor) {
    const volatile int d = divisor; // keeps the compiler from folding the division away
    quotient = 100 / d;
}

struct CrashRow {
    const char* name;
    std::function<void()> crash;
    int signal;
    std::string firstLine; // a regular expression
    std::string someFrame; // a regular expression one frame must match
};

// The record's first line, for a signal and the address it names.
std::string crashLine(int signal, const std::string& at = "0x[0-9a-f]+") {
    char code[16];
    std::snprintf(code, sizeof code, "0x%08x", signal);
    return R"(Ostrovalden 1\.0\.30 crash: exception )" + std::string(code) + " at " + at;
}

// A frame in the test program itself, which carries its source line (the
// build keeps debug information); `index` "0" for the frame that faulted.
std::string ownFrame(const std::string& function, const std::string& index = R"(\d+)") {
    return "  #" + index + R"( startup_test!\(anonymous namespace\)::)" + function +
           R"(\+0x[0-9a-f]+  \(startup_test\.cpp:\d+\))";
}

TEST(CrashRecord, fatalSignalsAndUncaughtExceptionsLeaveARecord) {
    QTemporaryDir dir;
    const std::string record = (dir.path() + "/crash.txt").toStdString();
    // The C library's frames carry at least a symbol.
    const CrashRow rows[] = {
        {"segmentation fault", [] { writeToAddress(0x10); }, SIGSEGV, crashLine(SIGSEGV, "0x10"),
         ownFrame(R"(writeToAddress\(unsigned long\))", "0")},
        {"uncaught exception", []() noexcept { throwUncaught(); }, SIGABRT, crashLine(SIGABRT),
         ownFrame(R"(throwUncaught\(\))")},
        {"abort", [] { std::abort(); }, SIGABRT, crashLine(SIGABRT),
         R"(  #\d+ libc\.so\.6!abort\+0x[0-9a-f]+.*)"},
        {"division by zero", [] { divideBy(0); }, SIGFPE, crashLine(SIGFPE),
         ownFrame(R"(divideBy\(int\)( \[clone \S+\])?)", "0")},
        {"signal sent by raise", [] { std::raise(SIGBUS); }, SIGBUS, crashLine(SIGBUS),
         R"(  #\d+ libc\.so\.6!(raise|gsignal)\+0x[0-9a-f]+.*)"},
    };
    const std::regex frame(R"(  #\d+ [^ !]+(!.+)?\+0x[0-9a-f]+(  \(\S+:\d+\))?)");
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        // A second crash replaces the record of the first.
        writeText(QString::fromStdString(record), std::string(5000, 'x'));

        EXPECT_EQ(crashInChild(record, row.crash), row.signal);
        const std::string raw = readText(QString::fromStdString(record));
        ASSERT_EQ(raw.find("xxx"), std::string::npos) << "the old record is still there";
        ASSERT_TRUE(app::symboliseCrashFile(record));
        EXPECT_FALSE(app::symboliseCrashFile(record)) << "a named record is left as it is";
        const std::string text = readText(QString::fromStdString(record));
        std::vector<std::string> lines;
        size_t start = 0;
        for (size_t nl; (nl = text.find('\n', start)) != std::string::npos; start = nl + 1)
            lines.push_back(text.substr(start, nl - start));
        EXPECT_EQ(start, text.size()) << "last line without newline";
        ASSERT_GE(lines.size(), 2u) << text;
        EXPECT_LE(lines.size(), 41u);
        EXPECT_TRUE(std::regex_match(lines[0], std::regex(row.firstLine))) << lines[0];
        bool found = false;
        for (size_t i = 1; i < lines.size(); ++i) {
            EXPECT_TRUE(std::regex_match(lines[i], frame)) << lines[i];
            EXPECT_EQ(lines[i].rfind("  #" + std::to_string(i - 1) + " ", 0), 0u) << lines[i];
            found = found || std::regex_match(lines[i], std::regex(row.someFrame));
        }
        EXPECT_TRUE(found) << text;
    }
}

// With consent the next start names the frames before the record goes out;
// what happens without consent is the reports' own test.
TEST(CrashRecord, theNextStartSendsTheNamedRecord) {
    QTemporaryDir dir;
    const std::string record = (dir.path() + "/crash.txt").toStdString();
    ASSERT_EQ(crashInChild(record, [] { writeToAddress(0x30); }), SIGSEGV);
    DataStore::instance().resetForTest();
    DataStore::instance().setPath((dir.path() + "/data.json").toStdString());
    storeSet(key::Telemetry, Json(true));
    std::string crashText;
    const auto poster = [&](const std::string&, const std::string& body, std::string& out, std::string&) {
        const Json sent = Json::parse(body);
        if (sent.at("kind").asString() == "crash") crashText = sent.at("text").asString();
        out = "{}";
        return true;
    };
    app::sendStartReports(dir.path().toStdString(), poster);
    EXPECT_NE(crashText.find("  #0 startup_test!(anonymous namespace)::writeToAddress(unsigned long)+0x"),
              std::string::npos)
        << crashText;
    DataStore::instance().resetForTest();
}

TEST(CrashRecord, withoutAPathTheProcessStillDiesAsItWould) {
    EXPECT_EQ(crashInChild("", [] { writeToAddress(0x10); }), SIGSEGV);
    QTemporaryDir dir;
    const std::string unwritable = (dir.path() + "/no/such/dir/crash.txt").toStdString();
    EXPECT_EQ(crashInChild(unwritable, []() noexcept { throwUncaught(); }), SIGABRT);
    EXPECT_FALSE(QFile::exists(QString::fromStdString(unwritable)));
}

} // namespace
