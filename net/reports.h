// The anonymous reports at the end of the start's job: how often each page
// was opened, and the record of the last crash. Nothing goes out without the
// student's consent ("telemetry"); without it a crash record is deleted
// unread, and the counts are never sent.
#pragma once

#include "net/http.h"

#include <string>

namespace net {

// At most one usage report in 20 hours; "telemetry_last" is stored before the
// send, so a failed one waits as long. A crash record that was sent is
// deleted; one that wasn't stays for the next start. `now`: seconds since the
// epoch.
void sendReports(const std::string& dataDir, const Poster& poster, double now);

} // namespace net
