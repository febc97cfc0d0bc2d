// The program's side of the service: one JSON object in, one out, for every
// path of the API. Kept apart from HTTP so that it can be tested as a
// function; the HTTP layer only adds the status line and the size limit.
#pragma once

#include "store/json.h"

#include <string>

namespace server {

class Storage;

struct ApiSettings {
    std::string latestVersion = "1.0.30"; // "/version": the newest program there is
    std::string downloadUrl;              // where to get it; "" for none
    std::string message;                  // to every student of every class; "" for none
};

struct ApiReply {
    int status = 200;
    Json body = Json::object();
};

// `path` without the "/api" prefix ("/check"). Every refusal carries a
// Danish "error"; a class code that no class has is refused with 403.
ApiReply handleApi(Storage& storage, const ApiSettings& settings, const std::string& path,
                   const std::string& body, double now);

// "abcd-efgh " → "ABCDEFGH": what students type is forgiving about case,
// blanks and dashes.
std::string normaliseCode(const std::string& typed);

// A reply with only "error".
ApiReply apiError(int status, const std::string& text);

} // namespace server
