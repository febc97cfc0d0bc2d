// The class server: the API for the students' program and the teacher's web
// page, over HTTPS, on one SQLite file. Options only; everything else is in
// the library beside this file.
#include "server/auth.h"
#include "server/storage.h"
#include "server/web.h"

#include <httplib.h>

#include <sys/socket.h>

#include <cctype>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <map>
#include <thread>

namespace {

// A class arriving at once opens dozens of connections in the same
// millisecond; the library's own listen backlog of 5 would drop their SYNs
// and cost each a one-second retry.
class Server : public httplib::SSLServer {
  public:
    using httplib::SSLServer::SSLServer;
    void widenBacklog() { ::listen(svr_sock_, 1024); }

    // A student's program connects anew for every job and every hand-in;
    // resuming the last TLS session spares the certificate's signature here
    // and its verification there. Stateless tickets: nothing to keep per
    // student, and a restart merely costs one full handshake each. One
    // ticket per handshake, as a client resumes from one at a time.
    void resumeSessions() {
        SSL_CTX* ctx = ssl_context();
        SSL_CTX_clear_options(ctx, SSL_OP_NO_TICKET);
        SSL_CTX_set_num_tickets(ctx, 1);
        SSL_CTX_set_timeout(ctx, 8 * 3600); // a school day
    }
};

const char* const kUsage =
    "Brug: ostrovalden-server --cert FIL --key FIL [tilvalg]\n"
    "  --cert FIL            serverens certifikat (PEM), med mellemcertifikaterne efter det\n"
    "  --key FIL             certifikatets private nøgle (PEM)\n"
    "  --db FIL              databasen (SQLite; oprettes første gang), standard: ostrovalden.db\n"
    "  --host ADRESSE        lyt på denne adresse, standard: 0.0.0.0 (alle)\n"
    "  --port NR             standard: 8443; 0 vælger en ledig port\n"
    "  --threads N           samtidige forbindelser, standard: 64\n"
    "  --signup-code KODE    nye lærerkonti kræver denne kode\n"
    "  --latest-version V    nyeste programversion, som \"/version\" melder, standard: 1.0.30\n"
    "  --download-url URL    hvor den nye version hentes\n"
    "  --message TEKST       en besked til alle elever på serveren\n"
    "  --admin E-MAILS       lærerkonti (kommasepareret), der kan se programmets fejlrapporter,\n"
    "                        nedbrud og brugsstatistik på /rapporter\n";

} // namespace

int main(int argc, char** argv) {
    std::map<std::string, std::string> opt = {
        {"--db", "ostrovalden.db"}, {"--host", "0.0.0.0"}, {"--port", "8443"}, {"--threads", "64"}};
    const std::map<std::string, bool> known = {
        {"--cert", true}, {"--key", true}, {"--db", true}, {"--host", true}, {"--port", true}, {"--threads", true},
        {"--signup-code", true}, {"--latest-version", true}, {"--download-url", true}, {"--message", true}, {"--admin", true}};
    for (int i = 1; i < argc; ++i) {
        const std::string name = argv[i];
        if (name == "--help" || name == "-h") {
            std::cout << kUsage;
            return 0;
        }
        if (!known.count(name) || i + 1 >= argc) {
            std::cerr << "Ukendt eller ufuldstændigt tilvalg: " << name << "\n" << kUsage;
            return 2;
        }
        opt[name] = argv[++i];
    }
    if (opt["--cert"].empty() || opt["--key"].empty()) {
        std::cerr << kUsage;
        return 2;
    }
    int port = 0, threads = 0;
    try {
        port = std::stoi(opt["--port"]);
        threads = std::stoi(opt["--threads"]);
    } catch (const std::exception&) {
        std::cerr << "--port og --threads skal være tal.\n";
        return 2;
    }
    if (!server::initCrypto()) {
        std::cerr << "libsodium kunne ikke starte.\n";
        return 1;
    }

    // Signals are taken by one thread of our own, so that a stop request
    // reaches the server between requests, never inside one.
    sigset_t stopSignals;
    sigemptyset(&stopSignals);
    sigaddset(&stopSignals, SIGINT);
    sigaddset(&stopSignals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &stopSignals, nullptr);
    std::signal(SIGPIPE, SIG_IGN);

    std::unique_ptr<server::Storage> storage;
    try {
        storage = server::openSqlite(opt["--db"]);
    } catch (const std::exception& e) {
        std::cerr << e.what() << "\n";
        return 1;
    }

    Server http(opt["--cert"].c_str(), opt["--key"].c_str());
    if (!http.is_valid()) {
        std::cerr << "Certifikatet eller nøglen kunne ikke læses: " << opt["--cert"] << ", " << opt["--key"] << "\n";
        return 1;
    }
    http.resumeSessions();
    http.new_task_queue = [threads] { return new httplib::ThreadPool(static_cast<size_t>(std::max(threads, 2))); };
    http.set_payload_max_length(256 * 1024);
    http.set_tcp_nodelay(true); // small replies go out at once, not after a delayed ACK
    // A job's calls follow each other within milliseconds, so an idle
    // connection is let go after 2 s, freeing its thread of the pool; the
    // count only stops one connection from holding a thread for ever.
    http.set_keep_alive_timeout(2);
    http.set_keep_alive_max_count(1000);
    http.set_read_timeout(10);
    http.set_write_timeout(10);

    server::WebSettings settings;
    settings.signupCode = opt["--signup-code"];
    {
        std::string list = opt["--admin"] + ",";
        for (size_t start = 0, comma; (comma = list.find(',', start)) != std::string::npos; start = comma + 1) {
            std::string email = list.substr(start, comma - start);
            email.erase(0, email.find_first_not_of(' '));
            email.erase(email.find_last_not_of(' ') + 1);
            for (char& c : email) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
            if (!email.empty()) settings.admins.push_back(email);
        }
    }
    if (!opt["--latest-version"].empty()) settings.api.latestVersion = opt["--latest-version"];
    settings.api.downloadUrl = opt["--download-url"];
    settings.api.message = opt["--message"];
    const std::shared_ptr<void> site = server::mount(http, *storage, settings);

    if (port == 0) {
        port = http.bind_to_any_port(opt["--host"]);
        if (port <= 0) port = -1;
    } else if (!http.bind_to_port(opt["--host"], port)) {
        port = -1;
    }
    if (port < 0) {
        std::cerr << "Kan ikke lytte på " << opt["--host"] << ":" << opt["--port"] << ".\n";
        return 1;
    }
    http.widenBacklog();
    std::cout << "Ostrovalden Skoles klasseserver lytter på https://" << opt["--host"] << ":" << port << "/"
              << std::endl;

    std::thread stopper([&] {
        int sig = 0;
        sigwait(&stopSignals, &sig);
        http.stop();
    });
    stopper.detach();
    const bool ok = http.listen_after_bind();
    return ok ? 0 : 1;
}
