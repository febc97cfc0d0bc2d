#include "net/tasks.h"

#include "net/api.h"
#include "store/datastore.h"

#include <set>

namespace net {

namespace {

Json keyRequest(const std::string& code) {
    Json request = Json::object();
    request["key"] = Json(code);
    return request;
}

} // namespace

std::vector<std::string> fetchNewTasks(double updated, const Poster& poster) {
    if (updated <= 0) return {};
    if (storeGet(key::TasksUpdated).asNumber(0) == updated) return {};
    const std::string code = classKey();
    if (code.empty()) return {};

    std::set<std::string> old;
    const Json before = storeGet(key::ClassTasks);
    for (const Json& task : before.at("tasks").asArray()) old.insert(task.at("id").asString());

    const Reply reply = call(poster, path::Tasks, keyRequest(code));
    if (reply.outcome != 1) return {};

    const Json seen = storeGet(key::TasksSeen);
    std::vector<std::string> titles;
    for (const Json& task : reply.body.at("tasks").asArray()) {
        const std::string& id = task.at("id").asString();
        if (!old.count(id) && !seen.has(id)) titles.push_back(task.at("title").asString());
    }
    storeSet(key::ClassTasks, reply.body);
    storeSet(key::TasksUpdated, Json(updated));
    return titles;
}

bool refetchTasks(const Poster& poster, std::string& error) {
    const std::string code = classKey();
    if (code.empty()) {
        error = kNoClassCode;
        return false;
    }
    const Reply reply = call(poster, path::Tasks, keyRequest(code));
    if (reply.outcome != 1) {
        error = reply.text;
        return false;
    }
    if (!reply.body.at("tasks").isArray()) {
        error = kUnexpectedReply;
        return false;
    }
    storeSet(key::ClassTasks, reply.body);
    storeSet(key::TasksUpdated, Json(reply.body.at("updated").asNumber(0)));
    return true;
}

bool sendAnswer(const Poster& poster, const std::string& taskId, const std::string& status,
                const std::string& answer, const std::string& name, const std::string& at, std::string& error) {
    const std::string code = classKey();
    if (code.empty()) {
        error = kNoClassCode;
        return false;
    }
    if (name.empty()) {
        error = "Skriv dit navn øverst først.";
        return false;
    }
    storeSet(key::StudentName, Json(name));
    Json request = keyRequest(code);
    request["uid"] = Json(ensureClassUid());
    request["name"] = Json(name);
    request["id"] = Json(taskId);
    request["status"] = Json(status);
    request["answer"] = Json(answer);
    const Reply reply = call(poster, path::TaskAnswer, request);
    if (reply.outcome != 1) {
        error = reply.text;
        return false;
    }
    Json answers = storeGet(key::TaskAnswers);
    if (!answers.isObject()) answers = Json::object();
    Json record = Json::object();
    record["status"] = Json(status);
    record["answer"] = Json(answer);
    record["at"] = Json(at);
    answers[taskId] = std::move(record);
    storeSet(key::TaskAnswers, answers);
    return true;
}

} // namespace net
