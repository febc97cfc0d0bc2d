// The one way the program talks to the class service: a blocking HTTPS POST
// of a JSON text, answered by a body or a Danish message. The server's
// certificate is always verified; a test may name the CA that signed its own
// server in OSTROVALDEN_CA_FILE, but nothing turns verification off.
#pragma once

#include <functional>
#include <string>

namespace net {

// The service's base address, ending in "/api": OSTROVALDEN_SERVICE_URL from
// the environment when it is set and not empty, otherwise the build's.
std::string serviceUrl();

// POSTs `body` to the base address's path + `path`. Any status below 500 is
// an answer: true, with the body in `responseOut` (a 4xx is told apart only
// by the JSON in it). A status of 500 and above, no connection, a time-out,
// an untrusted certificate: false, with a Danish sentence in `errorOut`.
// Blocks for at most the sum of its time-outs (36 s). Keeps no connection:
// each call opens its own, resuming the TLS session of an earlier call to the
// same server when it can, which spares the certificate exchange.
bool post(const std::string& path, const std::string& body, std::string& responseOut, std::string& errorOut);
// The same against an explicit base address.
bool postTo(const std::string& base, const std::string& path, const std::string& body, std::string& responseOut,
            std::string& errorOut);

// A run of calls on one thread, such as one background job's, over one
// connection kept open between them: the run pays for one TLS handshake, not
// one per call. Each call has `post`'s contract and time-outs. A hand-in
// doesn't go through one: libcurl sends a request again when a kept
// connection turns out closed before any byte of an answer, and a hand-in
// must never be sent twice.
class Session {
  public:
    Session();
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    bool post(const std::string& path, const std::string& body, std::string& responseOut, std::string& errorOut);
    bool postTo(const std::string& base, const std::string& path, const std::string& body, std::string& responseOut,
                std::string& errorOut);
    // Connections opened so far.
    long connections() const { return connections_; }

  private:
    void* easy_ = nullptr; // CURL*, kept out of this header
    long connections_ = 0;
};

// What the job and the pages call instead of `post`, so that a test can
// count or refuse calls.
using Poster = std::function<bool(const std::string& path, const std::string& body, std::string& responseOut,
                                  std::string& errorOut)>;

// `session`'s post as a Poster; the session must outlive it.
Poster posterOf(Session& session);

} // namespace net
