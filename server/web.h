// The teacher's web page and the API, mounted on one HTTP server.
#pragma once

#include "server/api.h"

#include <memory>
#include <string>
#include <vector>

namespace httplib {
class Server;
}

namespace server {

class Storage;

struct WebSettings {
    ApiSettings api;
    // When set, a new teacher account needs it: the school hands it to its
    // teachers, so that nobody else on the network can sign up.
    std::string signupCode;
    // Sign-in names (lower case) of the teachers who may read the programs'
    // bug reports, crash records and usage on "/rapporter".
    std::vector<std::string> admins;
};

// The handlers refer to what the returned handle holds: keep it as long as
// the server runs.
std::shared_ptr<void> mount(httplib::Server& http, Storage& storage, const WebSettings& settings);

} // namespace server
