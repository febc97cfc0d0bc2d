// The class service seen from the window: the background job on a thread of
// its own, one per start and one per press of "↻  Opdatér", and the handler
// that turns its result into the teacher's profile and the notices. The job
// itself (net/job.h) knows nothing of threads or widgets.
#pragma once

#include "net/job.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTime>

#include <functional>
#include <set>
#include <string>
#include <vector>

class QThread;

namespace app {

class MainWindow;

struct Notice {
    QString html;
    QString id; // "" for a notice that comes back every time
};

// "<b>Opdateret HH:mm.</b> " and what the teacher opened and closed since
// `before`, or that nothing changed.
QString profileSummary(const std::set<std::string>& before, const std::set<std::string>& after, const QTime& now);

// What a finished job tells the student, in the order the bar shows them
// (the last one stays on screen). With `force` one summary, always; without
// it one notice per message, new tasks and new version, and nothing for a
// failed check-in. `tasksOpen`: whether "opgaver" is open; `tasksUpdated` the
// stored "tasks_updated", which names the tasks' notice.
std::vector<Notice> serviceNotices(const net::ServiceResult& result, const std::set<std::string>& before,
                                   const QTime& now, bool tasksOpen, double tasksUpdated);

// On the interface thread: the profile into the options and the window, then
// the notices; with `force` the refresh button comes back.
void applyResult(MainWindow& window, const net::ServiceResult& result);

// The job's last step: the crash record named, then the usage and crash
// reports as the student's consent allows.
void sendStartReports(const std::string& dataDir, const net::Poster& poster);

// The last check-in's profile into the options, before the window is built,
// so that the first sidebar is already right.
void loadClassProfile();

class ServiceJobs : public QObject {
    Q_OBJECT
  public:
    explicit ServiceJobs(MainWindow* window, QString dataDir, QObject* parent = nullptr);
    ~ServiceJobs() override;

    // Starts the job on a fresh thread; its result is applied on this
    // object's thread.
    void start(bool force);
    // At shutdown: waits for each thread, in order of starting, at most `ms`
    // milliseconds (−1: as long as it takes). False when one is still
    // running; its thread object is then left alone, since a running QThread
    // can't be deleted.
    bool finish(int ms);

    // The job; tests replace it.
    std::function<net::ServiceResult(const net::JobInput&)> job = net::serviceJob;

  signals:
    // After a result has been applied.
    void applied();

  private:
    QPointer<MainWindow> window;
    QString dataDir;
    std::vector<QThread*> threads;
};

} // namespace app
