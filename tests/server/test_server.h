// A class server for tests: a fresh test CA and a certificate for
// 127.0.0.1/localhost made with openssl, a fresh SQLite file, and the real
// server code listening on a free loopback port in this process.
#pragma once

#include "server/storage.h"
#include "server/web.h"
#include "tests/server/temp_db.h"

#include <gtest/gtest.h>
#include <httplib.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>

namespace testsupport {

// A temporary directory with ca.pem, cert.pem, key.pem and, signed by a CA
// nobody trusts, other-cert.pem and other-key.pem.
class TestCerts {
  public:
    TestCerts() {
        std::string tmpl = (std::filesystem::temp_directory_path() / "ostro_tls_XXXXXX").string();
        if (!mkdtemp(tmpl.data())) throw std::runtime_error("mkdtemp");
        dir = tmpl;
        make("ca", "cert", "key");
        make("otherca", "other-cert", "other-key");
    }
    ~TestCerts() {
        std::error_code ec;
        std::filesystem::remove_all(dir, ec);
    }
    std::string path(const std::string& name) const { return (dir / name).string(); }

    std::filesystem::path dir;

  private:
    void run(const std::string& command) const {
        if (std::system(("cd '" + dir.string() + "' && (" + command + ") >/dev/null 2>&1").c_str()) != 0)
            throw std::runtime_error("openssl failed: " + command);
    }
    void make(const std::string& ca, const std::string& cert, const std::string& key) const {
        const std::string ec = "-newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes";
        run("openssl req -x509 " + ec + " -keyout " + ca + "-key.pem -out " + ca +
            ".pem -days 2 -subj '/CN=Ostrovalden test CA'");
        run("openssl req " + ec + " -keyout " + key + ".pem -out " + cert + ".csr -subj '/CN=localhost'");
        run("printf 'subjectAltName=DNS:localhost,IP:127.0.0.1\\nbasicConstraints=CA:FALSE\\n' > " + cert +
            ".ext");
        run("openssl x509 -req -in " + cert + ".csr -CA " + ca + ".pem -CAkey " + ca +
            "-key.pem -CAcreateserial -out " + cert + ".pem -days 2 -extfile " + cert + ".ext");
    }
};

// A suite's servers share one set of certificates: openssl takes its time.
class TlsSuite : public ::testing::Test {
  protected:
    static void SetUpTestSuite() { certs = std::make_unique<TestCerts>(); }
    static void TearDownTestSuite() { certs.reset(); }
    static inline std::unique_ptr<TestCerts> certs;
};

// A port on loopback that nothing listens on, until someone binds it.
inline int freePort() {
    const int fd = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in addr{};
    addr.sin_family = AF_INET;
    addr.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    bind(fd, reinterpret_cast<sockaddr*>(&addr), sizeof addr);
    socklen_t len = sizeof addr;
    getsockname(fd, reinterpret_cast<sockaddr*>(&addr), &len);
    close(fd);
    return ntohs(addr.sin_port);
}

class TestServer {
  public:
    // `ahead` may add routes that take precedence over the real ones.
    explicit TestServer(const TestCerts& certs, server::WebSettings settings = {},
                        const std::string& certName = "cert", const std::string& keyName = "key",
                        const std::function<void(httplib::Server&)>& ahead = {})
        : settings_(std::move(settings)),
          http_(certs.path(certName + ".pem").c_str(), certs.path(keyName + ".pem").c_str()) {
        db = server::openSqlite(certs.path("class-" + std::to_string(counter_++) + ".db"));
        http_.set_payload_max_length(256 * 1024);
        if (ahead) ahead(http_);
        site_ = server::mount(http_, *db, settings_);
        port = http_.bind_to_any_port("127.0.0.1");
        thread_ = std::thread([this] { http_.listen_after_bind(); });
        while (!http_.is_running())
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    ~TestServer() {
        http_.stop();
        thread_.join();
    }
    std::string base() const { return "https://127.0.0.1:" + std::to_string(port) + "/api"; }

    std::unique_ptr<server::Storage> db;
    int port = 0;

  private:
    static inline int counter_ = 0;
    server::WebSettings settings_;
    httplib::SSLServer http_;
    std::shared_ptr<void> site_;
    std::thread thread_;
};

} // namespace testsupport
