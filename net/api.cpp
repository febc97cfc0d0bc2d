#include "net/api.h"

#include "store/datastore.h"

#include <chrono>
#include <cstdlib>

namespace net {

Reply call(const Poster& poster, const std::string& path, const Json& request) {
    Reply reply;
    std::string body;
    if (!poster(path, Json::dump(request, 0), body, reply.text)) return reply;
    Json parsed;
    if (!Json::tryParse(body, parsed) || !parsed.isObject()) {
        reply.text = kUnexpectedReply;
        return reply;
    }
    reply.body = std::move(parsed);
    reply.text = reply.body.at("error").asString();
    reply.outcome = reply.text.empty() ? 1 : -1;
    return reply;
}

std::string classKey() { return storeGetString(key::ClassKey); }

std::string makeUid(unsigned mix) {
    static const char digits[] = "0123456789abcdef";
    const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(
                        std::chrono::system_clock::now().time_since_epoch())
                        .count();
    std::srand(static_cast<unsigned>(ms) ^ mix);
    std::string uid(24, '0');
    for (char& c : uid) c = digits[std::rand() & 15];
    return uid;
}

std::string ensureClassUid() {
    std::string uid = storeGetString(key::ClassUid);
    if (uid.empty()) {
        uid = makeUid();
        storeSet(key::ClassUid, Json(uid));
    }
    return uid;
}

} // namespace net
