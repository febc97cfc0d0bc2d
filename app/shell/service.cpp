#include "app/shell/service.h"

#include "app/shell/crash.h"
#include "app/shell/locks.h"
#include "app/shell/mainwindow.h"
#include "app/shell/options.h"
#include "fl/formulas/routes.h"
#include "fl/practice/stats.h"
#include "net/locks.h"
#include "net/reports.h"
#include "store/datastore.h"
#include "store/keys.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QThread>

namespace app {

namespace {

QString esc(const std::string& text) { return QString::fromStdString(text).toHtmlEscaped(); }

QString joinNames(const std::vector<std::string>& names) {
    QStringList out;
    for (const std::string& n : names) out << QString::fromStdString(n);
    return out.join(QStringLiteral(", "));
}

QString escapedTitles(const std::vector<std::string>& titles) {
    QStringList out;
    for (const std::string& t : titles) out << esc(t);
    return out.join(QStringLiteral(", "));
}

QString forceSummary(const net::ServiceResult& r, const std::set<std::string>& before, const QTime& now,
                     bool tasksOpen) {
    if (r.noLogin)
        return QStringLiteral("<b>Du er ikke tilmeldt en klasse endnu.</b> Skriv klassekoden fra din lærer under "
                              "<a href=\"go:%1\">Opgaver fra læreren</a> eller under ⚙ Indstillinger.")
            .arg(QLatin1String(fl::route::Tasks));
    if (r.outcome == 0)
        return QStringLiteral("<b>Kunne ikke hente lærerens indstillinger.</b> Tjek internettet, og prøv igen. ") +
               esc(r.text);
    QString html = profileSummary(before, r.off, now);
    // A refused class code would otherwise read as "no changes".
    if (r.outcome == -1) html += esc(r.text) + QLatin1Char(' ');
    if (!r.newTasks.empty() && tasksOpen)
        html += (r.newTasks.size() > 1 ? QStringLiteral("Nye opgaver: ") : QStringLiteral("Ny opgave: ")) +
                escapedTitles(r.newTasks) + QStringLiteral(" – <a href=\"go:%1\">Åbn</a>. ").arg(QLatin1String(fl::route::Tasks));
    if (!r.classMsg.empty()) html += QStringLiteral("<b>Besked fra din lærer:</b> ") + esc(r.classMsg);
    return html;
}

} // namespace

QString profileSummary(const std::set<std::string>& before, const std::set<std::string>& after, const QTime& now) {
    QString html = QStringLiteral("<b>Opdateret ") + now.toString(QStringLiteral("HH:mm")) + QStringLiteral(".</b> ");
    const net::OffChange change = net::diffOff(before, after);
    if (!change.opened.empty()) html += "Din lærer har åbnet: " + joinNames(change.opened) + ". ";
    if (!change.closed.empty()) html += "Slået fra: " + joinNames(change.closed) + ". ";
    if (change.opened.empty() && change.closed.empty()) html += QStringLiteral("Ingen ændringer fra din lærer. ");
    return html;
}

std::vector<Notice> serviceNotices(const net::ServiceResult& r, const std::set<std::string>& before,
                                   const QTime& now, bool tasksOpen, double tasksUpdated) {
    if (r.force) return {{forceSummary(r, before, now, tasksOpen), QString()}};
    std::vector<Notice> out;
    // The server's own word to every student comes first, so that the class's
    // outranks it on the one bar.
    if (!r.message.empty())
        out.push_back({QStringLiteral("<b>Besked:</b> ") + esc(r.message),
                       QStringLiteral("msg:") + QString::fromStdString(r.messageId.empty() ? r.message : r.messageId)});
    if (!r.classMsg.empty())
        out.push_back(
            {QStringLiteral("<b>Besked fra din lærer:</b> ") + esc(r.classMsg),
             QStringLiteral("class:") + QString::fromStdString(r.classMsgId.empty() ? r.classMsg : r.classMsgId)});
    if (!r.newTasks.empty() && tasksOpen)
        out.push_back({(r.newTasks.size() > 1 ? QStringLiteral("<b>Nye opgaver fra din lærer:</b> ")
                                              : QStringLiteral("<b>Ny opgave fra din lærer:</b> ")) +
                           escapedTitles(r.newTasks) +
                           QStringLiteral(" – <a href=\"go:%1\">Åbn Opgaver fra læreren</a>").arg(QLatin1String(fl::route::Tasks)),
                       QStringLiteral("tasks:") + QString::number(static_cast<long long>(tasksUpdated))});
    if (!r.newVersion.empty()) {
        const QString version = esc(r.newVersion);
        QString html = "<b>Ny version " + version + " af Ostrovalden findes.</b> Du har " +
                       QLatin1String(kVersion) + ".";
        html += r.versionUrl.empty()
                    ? QStringLiteral(" Kontakt sælgeren for at få den.")
                    : QStringLiteral(" <a href=\"%1\">Hent den her</a>.").arg(esc(r.versionUrl));
        out.push_back({html, "ver:" + QString::fromStdString(r.newVersion)});
    }
    return out;
}

void applyResult(MainWindow& window, const net::ServiceResult& result) {
    AppOptions& o = options();
    const std::set<std::string> before = o.off;
    o.off = result.off;
    o.profile = result.profile;
    window.applyProfile();
    if (result.force) window.refreshFinished();
    const double updated = storeGet(key::TasksUpdated).asNumber(0);
    for (const Notice& n :
         serviceNotices(result, before, QTime::currentTime(), isOpen(fl::route::Tasks), updated))
        window.showNotice(n.html, n.id);
}

void sendStartReports(const std::string& dataDir, const net::Poster& poster) {
    // Named here, off the interface thread: reading the modules' symbols
    // takes a moment, and only a record that may be sent is worth it.
    if (storeGet(key::Telemetry).asBool(false)) symboliseCrashFile(dataDir + "/crash.txt");
    net::sendReports(dataDir, poster, QDateTime::currentMSecsSinceEpoch() / 1000.0);
}

void loadClassProfile() {
    const net::Profile p = net::lastProfile();
    options().off = p.off;
    options().profile = p.profile;
}

ServiceJobs::ServiceJobs(MainWindow* w, QString dir, QObject* parent)
    : QObject(parent), window(w), dataDir(std::move(dir)) {}

// main() has waited its 5 s already and left without this when a job hung;
// here every job has ended or is about to.
ServiceJobs::~ServiceJobs() { finish(-1); }

void ServiceJobs::start(bool force) {
    net::JobInput in;
    in.dataDir = dataDir.toStdString();
    in.force = force;
    // Read on the job's thread: the store locks, and the start doesn't wait for it.
    in.classSummary = [] { return fl::classSummary(fl::loadStats(), fl::loadExams()); };
    in.sendReports = sendStartReports;
    auto run = job;
    QThread* thread = QThread::create([this, run, in]() mutable {
        // All of the job's calls over one connection, made on its own thread.
        net::Session session;
        in.poster = net::posterOf(session);
        const net::ServiceResult result = run(in);
        // Queued onto this object's thread; dropped if it is gone by then.
        QMetaObject::invokeMethod(
            this,
            [this, result] {
                if (window) applyResult(*window, result);
                emit applied();
            },
            Qt::QueuedConnection);
    });
    threads.push_back(thread);
    thread->start(QThread::InheritPriority);
}

bool ServiceJobs::finish(int ms) {
    bool all = true;
    for (QThread*& thread : threads) {
        if (!thread) continue;
        if (!thread->wait(ms < 0 ? QDeadlineTimer(QDeadlineTimer::Forever) : QDeadlineTimer(ms))) {
            all = false;
            continue;
        }
        delete thread;
        thread = nullptr;
    }
    return all;
}

} // namespace app
