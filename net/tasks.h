// The teacher's tasks on the student's side: fetching them at check-in and on
// request, and handing in an answer. The list lives in the store
// ("class_tasks"), so the task page works offline with what came last.
#pragma once

#include "net/http.h"

#include <string>
#include <vector>

namespace net {

// At check-in, with "tasksUpdated" of "/check". Fetches "/tasks" only when
// `updated` is positive and differs from the stored "tasks_updated"; returns
// the titles of tasks that are neither in the old list nor seen. A failed
// fetch stores nothing, so that the next start asks again.
std::vector<std::string> fetchNewTasks(double updated, const Poster& poster);

// "Hent opgaver igen": on success stores the list and its "updated". On
// failure `error` holds the Danish reason (without the page's lead-in).
bool refetchTasks(const Poster& poster, std::string& error);

// One hand-in ("done") or question ("question"). Stores the student's name,
// makes "class_uid" if needed, POSTs, and on success records
// {status, answer, at} under the task's id in "task_answers". `at` is the
// sending time as the page shows it ("d.M.yyyy HH:mm"). On failure nothing
// is recorded and `error` holds the service's or the network's sentence; an
// empty class code or name sends nothing and says so.
bool sendAnswer(const Poster& poster, const std::string& taskId, const std::string& status,
                const std::string& answer, const std::string& name, const std::string& at, std::string& error);

inline constexpr char kNoClassCode[] =
    "Skriv klassekoden fra din lærer og dit navn først – så kan du aflevere.";

} // namespace net
