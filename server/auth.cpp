#include "server/auth.h"

#include <sodium.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace server {

namespace {

constexpr int kFreeTries = 3;
constexpr double kMaxWait = 60;

} // namespace

bool initCrypto() { return sodium_init() >= 0; }

std::string hashPassword(const std::string& password) {
    char out[crypto_pwhash_STRBYTES];
    if (crypto_pwhash_str(out, password.data(), password.size(), crypto_pwhash_OPSLIMIT_INTERACTIVE,
                          crypto_pwhash_MEMLIMIT_INTERACTIVE) != 0)
        throw std::runtime_error("hukommelsen slap op under hashing af adgangskoden");
    return out;
}

bool checkPassword(const std::string& hash, const std::string& password) {
    return crypto_pwhash_str_verify(hash.c_str(), password.data(), password.size()) == 0;
}

std::string randomHex(size_t bytes) {
    std::string raw(bytes, '\0');
    randombytes_buf(raw.data(), raw.size());
    std::string hex(bytes * 2 + 1, '\0');
    sodium_bin2hex(hex.data(), hex.size(), reinterpret_cast<const unsigned char*>(raw.data()), raw.size());
    hex.pop_back();
    return hex;
}

std::string tokenHash(const std::string& token) {
    unsigned char digest[crypto_generichash_BYTES];
    crypto_generichash(digest, sizeof digest, reinterpret_cast<const unsigned char*>(token.data()), token.size(),
                       nullptr, 0);
    char hex[sizeof digest * 2 + 1];
    sodium_bin2hex(hex, sizeof hex, digest, sizeof digest);
    return hex;
}

bool sameSecret(const std::string& a, const std::string& b) {
    return a.size() == b.size() && !a.empty() && sodium_memcmp(a.data(), b.data(), a.size()) == 0;
}

double signInWait(int count, double last, double now) {
    if (count < kFreeTries) return 0;
    const double wait = std::min(kMaxWait, std::pow(2.0, count - kFreeTries));
    return std::max(0.0, last + wait - now);
}

} // namespace server
