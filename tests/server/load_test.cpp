// Load and a hard kill on loopback: simulated students check in and hand in
// against the server binary over verified TLS; half way the server is killed
// with SIGKILL and started again. Every hand-in that was answered with
// success must be in the database afterwards, exactly once.
//
// Each student keeps one connection, through the program's own Session, as
// the background job does for its calls; "fresh" makes a new connection per
// request through the program's post, as a hand-in does, resuming the TLS
// session of the student's last one.
//
// Usage: server_load SERVER_BINARY [seconds=30] [students=60] [fresh]
// Prints requests per second and p50/p99 latency over the whole run, new
// connections and the restart included (and, for check-ins, apart from
// them); exits 1 on a lost or doubled hand-in.
#include "net/http.h"
#include "server/storage.h"
#include "tests/server/test_server.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <map>
#include <mutex>
#include <random>

namespace {

using Clock = std::chrono::steady_clock;

pid_t startServer(const std::string& binary, const testsupport::TestCerts& certs, const std::string& db,
                  int port) {
    const pid_t pid = fork();
    if (pid == 0) {
        freopen("/dev/null", "w", stdout);
        const std::string cert = certs.path("cert.pem"), key = certs.path("key.pem"),
                          p = std::to_string(port);
        execl(binary.c_str(), binary.c_str(), "--cert", cert.c_str(), "--key", key.c_str(), "--db",
              db.c_str(), "--host", "127.0.0.1", "--port", p.c_str(), static_cast<char*>(nullptr));
        _exit(127);
    }
    // Up when it answers.
    for (int i = 0; i < 500; ++i) {
        std::string out, err;
        if (net::post("/version", "{}", out, err)) return pid;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return pid;
}

double percentile(std::vector<double> v, double p) {
    if (v.empty()) return 0;
    std::sort(v.begin(), v.end());
    return v[std::min(v.size() - 1, static_cast<size_t>(p * v.size()))];
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: server_load SERVER_BINARY [seconds] [students]\n");
        return 2;
    }
    const std::string binary = argv[1];
    const double seconds = argc > 2 ? std::atof(argv[2]) : 30;
    const int students = argc > 3 ? std::atoi(argv[3]) : 60;
    const bool fresh = argc > 4 && std::string(argv[4]) == "fresh";

    testsupport::TestCerts certs;
    const std::string db = certs.path("load.db");
    {
        std::unique_ptr<server::Storage> s = server::openSqlite(db);
        const int64_t id = testsupport::addClass(*s, "LOAD2345");
        s->addTask({"opg1", id, "Opgave", "", "", "both", "", 0}, 1);
    }
    const int port = testsupport::freePort();
    setenv("OSTROVALDEN_CA_FILE", certs.path("ca.pem").c_str(), 1);
    setenv("OSTROVALDEN_SERVICE_URL", ("https://127.0.0.1:" + std::to_string(port) + "/api").c_str(), 1);
    std::atomic<pid_t> pid = startServer(binary, certs, db, port);

    std::mutex mutex;
    std::vector<double> checkMs, answerMs, steadyCheckMs, keptCheckMs;
    std::vector<std::string> acked;
    std::atomic<long> requests{0}, failures{0};
    const auto start = Clock::now();
    const auto end =
        start + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
    const auto half = start + (end - start) / 2;

    std::vector<std::thread> threads;
    for (int i = 0; i < students; ++i)
        threads.emplace_back([&, i] {
            std::mt19937 rng(static_cast<unsigned>(i));
            std::uniform_int_distribution<int> think(50, 250); // ms between two actions of one student
            net::Session session;
            const auto post = [&](const std::string& path, const std::string& body, std::string& out) {
                std::string err;
                return fresh ? net::post(path, body, out, err) : session.post(path, body, out, err);
            };
            for (int n = 0; Clock::now() < end; ++n) {
                std::string out, err;
                const long opened = session.connections();
                auto t0 = Clock::now();
                const bool checked = post("/check", R"({"key":"LOAD2345","version":"1.0.30"})", out);
                auto ms = std::chrono::duration<double, std::milli>(Clock::now() - t0).count();
                ++requests;
                if (checked && out.find("\"error\"") == std::string::npos) {
                    std::lock_guard lock(mutex);
                    checkMs.push_back(ms);
                    if (!fresh && session.connections() == opened) keptCheckMs.push_back(ms);
                    if (t0 < half) steadyCheckMs.push_back(ms);
                } else {
                    ++failures;
                }

                const std::string answer = "elev" + std::to_string(i) + "-svar" + std::to_string(n);
                const std::string body = R"({"key":"LOAD2345","uid":"u)" + std::to_string(i) +
                                         R"(","name":"Elev","id":"opg1","status":"done","answer":")" +
                                         answer + "\"}";
                t0 = Clock::now();
                const bool sent = post("/tasks/answer", body, out);
                ms = std::chrono::duration<double, std::milli>(Clock::now() - t0).count();
                ++requests;
                if (sent && out == "{}") {
                    std::lock_guard lock(mutex);
                    answerMs.push_back(ms);
                    acked.push_back(answer);
                } else {
                    ++failures;
                }
                std::this_thread::sleep_for(std::chrono::milliseconds(think(rng)));
            }
        });

    // Half way: kill -9, and start again on the same file and port.
    std::this_thread::sleep_until(half);
    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
    const long before = requests;
    pid = startServer(binary, certs, db, port);
    const double restart = std::chrono::duration<double>(Clock::now() - half).count();
    for (std::thread& t : threads)
        t.join();
    const double elapsed = std::chrono::duration<double>(Clock::now() - start).count();
    kill(pid, SIGTERM);
    waitpid(pid, nullptr, 0);

    std::unique_ptr<server::Storage> s = server::openSqlite(db);
    std::map<std::string, int> stored;
    const int64_t classId = s->classByCode("LOAD2345")->id;
    for (const server::Answer& a : s->answersOf(classId, "opg1"))
        ++stored[a.answer];
    long lost = 0, doubled = 0;
    for (const std::string& a : acked) {
        const int n = stored.count(a) ? stored[a] : 0;
        lost += n == 0;
        doubled += n > 1;
    }
    std::printf(
        "%s, students %d, %.1f s, %ld requests (%.0f/s), %ld failed (around the kill at %ld requests; "
        "restart took %.2f s)\n",
        fresh ? "a new connection per request" : "one connection per student", students, elapsed,
        requests.load(), requests / elapsed, failures.load(), before, restart);
    std::printf("check-in  ms before the kill: p50 %.2f  p99 %.2f  (%zu)\n", percentile(steadyCheckMs, 0.5),
                percentile(steadyCheckMs, 0.99), steadyCheckMs.size());
    std::printf("check-in  ms, whole run:       p50 %.2f  p99 %.2f  (%zu)\n", percentile(checkMs, 0.5),
                percentile(checkMs, 0.99), checkMs.size());
    // Apart from the arrivals at the start and after the restart: what the
    // server's handling costs when no handshake is due.
    if (!keptCheckMs.empty())
        std::printf("check-in  ms, kept connection: p50 %.2f  p99 %.2f  (%zu)\n",
                    percentile(keptCheckMs, 0.5), percentile(keptCheckMs, 0.99), keptCheckMs.size());
    std::printf("hand-in   ms, whole run:       p50 %.2f  p99 %.2f  (%zu)\n", percentile(answerMs, 0.5),
                percentile(answerMs, 0.99), answerMs.size());
    std::printf("acknowledged hand-ins %zu, in the database %zu, lost %ld, twice %ld\n", acked.size(),
                stored.size(), lost, doubled);
    const bool ok = lost == 0 && doubled == 0 && !acked.empty();
    std::printf("%d passed, %d failed\n", ok ? 1 : 0, ok ? 0 : 1);
    return ok ? 0 : 1;
}
