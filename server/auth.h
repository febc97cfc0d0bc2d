// Teachers' passwords, sign-in tokens and the brake on guessing. Passwords
// are kept only as libsodium's slow, salted crypto_pwhash strings; tokens are
// random and stored as hashes, so a copy of the database signs nobody in.
#pragma once

#include <string>

namespace server {

class Storage;

// Must run once before any other call here; false when libsodium can't start.
bool initCrypto();

std::string hashPassword(const std::string& password);
bool checkPassword(const std::string& hash, const std::string& password);

// `bytes` random bytes as lower-case hex.
std::string randomHex(size_t bytes);
// The hash under which a session token is stored.
std::string tokenHash(const std::string& token);
// Compares in time independent of where the texts differ.
bool sameSecret(const std::string& a, const std::string& b);

// Seconds a sign-in for `who` must still wait after `count` wrong passwords,
// the last at `last`: none for the first few, then doubling to a minute.
double signInWait(int count, double last, double now);

} // namespace server
