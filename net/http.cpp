// libcurl's easy interface, one handle per Session, so that the background
// job and the interface thread share no connection; what they do share is
// libcurl's cache of TLS sessions, behind its own locks. The time-outs mirror
// the service's contract: 8 s to find and reach the host, then no more than
// 10 s without progress while sending or receiving.
#include "net/http.h"

#include <curl/curl.h>
#ifdef OSTROVALDEN_SHARED_CA_STORE
#include <openssl/ssl.h>
#include <openssl/x509.h>
#endif

#include <cstdlib>
#include <map>
#include <memory>
#include <mutex>
#include <string_view>

#ifndef OSTROVALDEN_SERVICE_URL
#error "OSTROVALDEN_SERVICE_URL must be defined by the build"
#endif

namespace net {

namespace {

constexpr long kConnectMs = 8000;  // resolving and connecting
constexpr long kStallSeconds = 10; // sending or receiving without a byte
constexpr long kTotalMs = 8000 + 8000 + 10000 + 10000;
// No answer of the service comes near this; a larger one is not ours.
constexpr size_t kMaxResponse = 16u << 20;

const char* const kBadAddress = "Ugyldig serveradresse.";
const char* const kNoStart = "Kunne ikke starte netværk.";
const char* const kNoConnection = "Ingen forbindelse til serveren.";
const char* const kNoRequest = "Kunne ikke sende forespørgslen.";
const char* const kBroken =
    "Forbindelsen til serveren blev afbrudt. Tjek internetforbindelsen, og prøv igen.";
const char* const kTooSlow = "Serveren svarede ikke i tide. Tjek internetforbindelsen, og prøv igen.";
const char* const kUntrusted =
    "Serverens certifikat kunne ikke godkendes, så der blev ikke sendt noget. Forbindelsen er måske ikke "
    "sikker – bed din lærer eller skolens IT-ansvarlige om at tjekke serverens certifikat.";
const char* const kNoTls = "Der kunne ikke oprettes en sikker forbindelse til serveren. Tjek internetforbindelsen, "
                           "og prøv igen.";
const char* const kUnexpected = "Uventet svar fra serveren.";

struct Slist {
    void operator()(curl_slist* l) const { curl_slist_free_all(l); }
};
struct Url {
    void operator()(CURLU* u) const { curl_url_cleanup(u); }
};

bool globalInit() {
    static std::once_flag once;
    static bool ok = false;
    std::call_once(once, [] { ok = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK; });
    return ok;
}

// TLS sessions (and resolved names) kept across connections, so that a new
// connection to the same server resumes instead of verifying the chain and
// signing anew. libcurl keys each session by host, port and TLS settings, so
// a session made under one CA file is never resumed under another.
struct Share {
    CURLSH* handle = nullptr;
    std::mutex locks[CURL_LOCK_DATA_LAST];
};

CURLSH* sharedCache() {
    // Never freed: a job's thread may still be inside a call when the
    // program leaves.
    static Share* const share = [] {
        auto* s = new Share;
        s->handle = curl_share_init();
        if (!s->handle) return s;
        curl_share_setopt(s->handle, CURLSHOPT_LOCKFUNC, +[](CURL*, curl_lock_data d, curl_lock_access, void* u) {
            static_cast<Share*>(u)->locks[d].lock();
        });
        curl_share_setopt(s->handle, CURLSHOPT_UNLOCKFUNC, +[](CURL*, curl_lock_data d, void* u) {
            static_cast<Share*>(u)->locks[d].unlock();
        });
        curl_share_setopt(s->handle, CURLSHOPT_USERDATA, s);
        curl_share_setopt(s->handle, CURLSHOPT_SHARE, CURL_LOCK_DATA_SSL_SESSION);
        curl_share_setopt(s->handle, CURLSHOPT_SHARE, CURL_LOCK_DATA_DNS);
        return s;
    }();
    return share->handle;
}

#ifdef OSTROVALDEN_SHARED_CA_STORE
// OpenSSL 3 takes tens of milliseconds (hundreds on a busy machine) to read
// a system's bundle of CAs, and libcurl reads it again for every new
// connection; so each file is read once into a store that all connections
// share. Only where the trust anchors come from changes: OpenSSL still
// verifies the chain against them, and libcurl the name. Never freed, like
// the share. In practice there is one file per process; were there two, a
// TLS session made under one could be resumed under the other, since
// libcurl's cache then sees no file to tell them apart.
X509_STORE* sharedStore(const std::string& file) {
    static std::mutex mutex;
    static auto* const stores = new std::map<std::string, X509_STORE*>;
    std::lock_guard lock(mutex);
    if (const auto found = stores->find(file); found != stores->end()) return found->second;
    X509_STORE* store = X509_STORE_new();
    if (!store) return nullptr;
    if (X509_STORE_load_file(store, file.c_str()) != 1) {
        X509_STORE_free(store);
        return nullptr; // libcurl reads it itself, and says what is wrong with it
    }
    X509_STORE_set_flags(store, X509_V_FLAG_PARTIAL_CHAIN); // as libcurl sets its own
    (*stores)[file] = store;
    return store;
}

CURLcode useStore(CURL*, void* sslContext, void* store) {
    SSL_CTX_set1_cert_store(static_cast<SSL_CTX*>(sslContext), static_cast<X509_STORE*>(store));
    return CURLE_OK;
}
#endif

// The CA file that `c` verifies against: a test's, or libcurl's built-in one.
void trustCaFile(CURL* c) {
    const char* testCa = std::getenv("OSTROVALDEN_CA_FILE");
    if (testCa && !*testCa) testCa = nullptr;
#ifdef OSTROVALDEN_SHARED_CA_STORE
    const curl_version_info_data* info = curl_version_info(CURLVERSION_NOW);
    char* builtIn = nullptr;
    curl_easy_getinfo(c, CURLINFO_CAINFO, &builtIn);
    const char* file = testCa ? testCa : builtIn;
    if (file && info->ssl_version && std::string_view(info->ssl_version).substr(0, 7) == "OpenSSL") {
        if (X509_STORE* store = sharedStore(file)) {
            curl_easy_setopt(c, CURLOPT_CAINFO, nullptr);
            curl_easy_setopt(c, CURLOPT_CAPATH, nullptr);
            if (curl_easy_setopt(c, CURLOPT_SSL_CTX_FUNCTION, useStore) == CURLE_OK) {
                curl_easy_setopt(c, CURLOPT_SSL_CTX_DATA, store);
                return;
            }
            curl_easy_setopt(c, CURLOPT_CAINFO, file);
            return;
        }
    }
#endif
    if (testCa) curl_easy_setopt(c, CURLOPT_CAINFO, testCa);
}

size_t collect(char* data, size_t size, size_t count, void* user) {
    auto* out = static_cast<std::string*>(user);
    const size_t n = size * count;
    if (out->size() + n > kMaxResponse) return 0; // ends the transfer with CURLE_WRITE_ERROR
    out->append(data, n);
    return n;
}

// An https address with a host; its path without the trailing "/" + `path`.
bool requestUrl(const std::string& base, const std::string& path, std::string& url) {
    std::unique_ptr<CURLU, Url> u(curl_url());
    if (!u || curl_url_set(u.get(), CURLUPART_URL, base.c_str(), 0) != CURLUE_OK) return false;
    char* scheme = nullptr;
    char* host = nullptr;
    char* basePath = nullptr;
    bool ok = curl_url_get(u.get(), CURLUPART_SCHEME, &scheme, 0) == CURLUE_OK &&
              curl_url_get(u.get(), CURLUPART_HOST, &host, 0) == CURLUE_OK &&
              curl_url_get(u.get(), CURLUPART_PATH, &basePath, 0) == CURLUE_OK;
    ok = ok && std::string(scheme) == "https" && *host != '\0';
    std::string full = ok ? basePath : "";
    curl_free(scheme);
    curl_free(host);
    curl_free(basePath);
    if (!ok) return false;
    while (!full.empty() && full.back() == '/') full.pop_back();
    full += path;
    char* joined = nullptr;
    if (curl_url_set(u.get(), CURLUPART_PATH, full.c_str(), 0) != CURLUE_OK ||
        curl_url_get(u.get(), CURLUPART_URL, &joined, 0) != CURLUE_OK)
        return false;
    url = joined;
    curl_free(joined);
    return true;
}

std::string messageFor(CURLcode code, CURL* easy) {
    switch (code) {
    case CURLE_UNSUPPORTED_PROTOCOL:
    case CURLE_URL_MALFORMAT:
        return kBadAddress;
    case CURLE_FAILED_INIT:
    case CURLE_OUT_OF_MEMORY:
        return kNoStart;
    case CURLE_COULDNT_RESOLVE_PROXY:
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_CONNECT:
        return kNoConnection;
    case CURLE_OPERATION_TIMEDOUT: {
        curl_off_t connected = 0;
        curl_easy_getinfo(easy, CURLINFO_CONNECT_TIME_T, &connected);
        return connected > 0 ? kTooSlow : kNoConnection;
    }
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_PINNEDPUBKEYNOTMATCH:
    case CURLE_SSL_INVALIDCERTSTATUS:
        return kUntrusted;
    case CURLE_SSL_CONNECT_ERROR:
        return kNoTls;
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
    case CURLE_GOT_NOTHING:
    case CURLE_PARTIAL_FILE:
        return kBroken;
    case CURLE_WRITE_ERROR:
    case CURLE_WEIRD_SERVER_REPLY:
        return kUnexpected;
    default:
        return kNoRequest;
    }
}

} // namespace

std::string serviceUrl() {
    const char* env = std::getenv("OSTROVALDEN_SERVICE_URL");
    if (env && *env) return env;
    return OSTROVALDEN_SERVICE_URL;
}

bool post(const std::string& path, const std::string& body, std::string& responseOut, std::string& errorOut) {
    return postTo(serviceUrl(), path, body, responseOut, errorOut);
}

bool postTo(const std::string& base, const std::string& path, const std::string& body, std::string& responseOut,
            std::string& errorOut) {
    Session session;
    return session.postTo(base, path, body, responseOut, errorOut);
}

Poster posterOf(Session& session) {
    return [&session](const std::string& path, const std::string& body, std::string& responseOut,
                      std::string& errorOut) { return session.post(path, body, responseOut, errorOut); };
}

Session::Session() {
    if (globalInit()) easy_ = curl_easy_init();
    if (easy_) curl_easy_setopt(static_cast<CURL*>(easy_), CURLOPT_SHARE, sharedCache());
}

Session::~Session() { curl_easy_cleanup(static_cast<CURL*>(easy_)); }

bool Session::post(const std::string& path, const std::string& body, std::string& responseOut,
                   std::string& errorOut) {
    return postTo(serviceUrl(), path, body, responseOut, errorOut);
}

bool Session::postTo(const std::string& base, const std::string& path, const std::string& body,
                     std::string& responseOut, std::string& errorOut) {
    responseOut.clear();
    errorOut.clear();
    if (!easy_) {
        errorOut = kNoStart;
        return false;
    }
    std::string url;
    if (!requestUrl(base, path, url)) {
        errorOut = kBadAddress;
        return false;
    }
    // "Expect:" keeps curl from waiting for a 100-continue on larger bodies.
    curl_slist* raw = curl_slist_append(nullptr, "Content-Type: application/json");
    raw = raw ? curl_slist_append(raw, "Expect:") : nullptr;
    std::unique_ptr<curl_slist, Slist> headers(raw);
    if (!headers) {
        errorOut = kNoStart;
        return false;
    }

    CURL* c = static_cast<CURL*>(easy_);
    curl_easy_setopt(c, CURLOPT_URL, url.c_str());
    curl_easy_setopt(c, CURLOPT_PROTOCOLS_STR, "https");
    curl_easy_setopt(c, CURLOPT_USERAGENT, "Ostrovalden/1.0");
    curl_easy_setopt(c, CURLOPT_HTTPHEADER, headers.get());
    curl_easy_setopt(c, CURLOPT_POST, 1L);
    curl_easy_setopt(c, CURLOPT_POSTFIELDS, body.data());
    curl_easy_setopt(c, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
    curl_easy_setopt(c, CURLOPT_NOSIGNAL, 1L); // time-outs without SIGALRM: the job runs on its own thread
    curl_easy_setopt(c, CURLOPT_CONNECTTIMEOUT_MS, kConnectMs);
    curl_easy_setopt(c, CURLOPT_LOW_SPEED_LIMIT, 1L);
    curl_easy_setopt(c, CURLOPT_LOW_SPEED_TIME, kStallSeconds);
    curl_easy_setopt(c, CURLOPT_TIMEOUT_MS, kTotalMs);
    curl_easy_setopt(c, CURLOPT_SSL_VERIFYPEER, 1L);
    curl_easy_setopt(c, CURLOPT_SSL_VERIFYHOST, 2L);
    trustCaFile(c);
    curl_easy_setopt(c, CURLOPT_WRITEFUNCTION, collect);
    curl_easy_setopt(c, CURLOPT_WRITEDATA, &responseOut);

    const CURLcode code = curl_easy_perform(c);
    long opened = 0;
    curl_easy_getinfo(c, CURLINFO_NUM_CONNECTS, &opened);
    connections_ += opened;
    if (code != CURLE_OK) {
        responseOut.clear();
        errorOut = messageFor(code, c);
        return false;
    }
    long status = 0;
    curl_easy_getinfo(c, CURLINFO_RESPONSE_CODE, &status);
    if (status >= 500) {
        responseOut.clear();
        errorOut = "Serveren svarede med en fejl (" + std::to_string(status) + ").";
        return false;
    }
    return true;
}

} // namespace net
