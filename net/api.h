// The class service's API: its paths, the store keys that the client side
// owns, and one call that turns a POST into a JSON object or a Danish text.
//
//   path            request                                   reply
//   /check          key, version                              message, messageId, classMsg, classMsgId,
//                                                             classStats (bool), tasksUpdated (number),
//                                                             off (array of topic ids), profile
//   /version        {}                                        version, url
//   /classstats     the practice summary with topics (object: topic → {right, total}), uid, version, key
//   /tasks          key                                       tasks (array of task objects), updated
//   /tasks/answer   key, uid, name, id, status, answer        error (optional)
//   /telemetry      kind and its fields                       –
//   /bug            key and the report's fields               error (optional)
//
// A non-empty "error" member in any reply is a Danish sentence to show.
#pragma once

#include "net/http.h"
#include "store/json.h"
#include "store/keys.h"

#include <string>

namespace net {

// What every request reports and what the update check compares with.
inline constexpr char kVersion[] = "1.0.30";

namespace path {
inline constexpr char Check[] = "/check";
inline constexpr char Version[] = "/version";
inline constexpr char ClassStats[] = "/classstats";
inline constexpr char Tasks[] = "/tasks";
inline constexpr char TaskAnswer[] = "/tasks/answer";
inline constexpr char Telemetry[] = "/telemetry";
inline constexpr char Bug[] = "/bug";
} // namespace path

inline constexpr char kUnexpectedReply[] = "Uventet svar fra serveren.";

struct Reply {
    // 1: a JSON object without "error". −1: the service answered with a
    // non-empty "error" (a refused class code, a bad request). 0: no usable
    // answer (no network, a server error, or a reply that is not an object).
    int outcome = 0;
    Json body;        // the reply's object, for 1 and −1
    std::string text; // the service's "error", the network's message, or kUnexpectedReply
};

// POSTs `request` compactly and reads the reply.
Reply call(const Poster& poster, const std::string& path, const Json& request);

// The class code typed by the student; "" when none is kept.
std::string classKey();

// 24 characters of "0123456789abcdef", seeded from the time in
// milliseconds XOR `mix`; the class's uid is kept as "class_uid" once made.
std::string makeUid(unsigned mix = 0x5bd1e995);
std::string ensureClassUid();

} // namespace net
