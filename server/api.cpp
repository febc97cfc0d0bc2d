#include "server/api.h"

#include "server/storage.h"

#include <functional>
#include <map>

namespace server {

namespace {

// Longer texts are refused, not cut: a cut answer would be handed in as
// something the student never wrote.
constexpr size_t kMaxName = 120;
constexpr size_t kMaxAnswer = 4000;
constexpr size_t kMaxId = 64;

const char* const kUnknownCode =
    "Klassekoden findes ikke. Tjek koden, som din lærer har givet dig, under Opgaver fra læreren.";

std::string missing(const std::string& member) {
    return "Forespørgslen mangler \"" + member + "\".";
}

// A string member that must be there (and, with `nonEmpty`, hold something).
bool text(const Json& request, const std::string& member, std::string& out, ApiReply& refusal,
          bool nonEmpty = true) {
    const Json& v = request.at(member);
    if (!v.isString() || (nonEmpty && v.str.empty())) {
        refusal = apiError(400, missing(member));
        return false;
    }
    out = v.str;
    return true;
}

struct Context {
    Storage& storage;
    const ApiSettings& settings;
    const Json& request;
    double now;
};

// Finds the class of the request's "key", or says why not.
std::optional<ClassInfo> classOf(const Context& c, ApiReply& refusal) {
    std::string code;
    if (!text(c.request, "key", code, refusal)) return std::nullopt;
    std::optional<ClassInfo> found = c.storage.classByCode(normaliseCode(code));
    if (!found) refusal = apiError(403, kUnknownCode);
    return found;
}

Json taskJson(const Task& t) {
    Json j = Json::object();
    j["id"] = Json(t.id);
    j["title"] = Json(t.title);
    j["mode"] = Json(t.mode);
    j["text"] = Json(t.text);
    if (!t.due.empty()) j["due"] = Json(t.due);
    Json circuit;
    if (!t.circuit.empty() && Json::tryParse(t.circuit, circuit)) j["circuit"] = std::move(circuit);
    return j;
}

ApiReply check(const Context& c) {
    ApiReply reply;
    const std::optional<ClassInfo> cls = classOf(c, reply);
    if (!cls) return reply;
    Json& b = reply.body;
    b["message"] = Json(c.settings.message);
    b["messageId"] = Json(""); // the text is its own id
    b["classMsg"] = Json(cls->message);
    b["classMsgId"] = Json(cls->messageId);
    b["classStats"] = Json(cls->stats);
    b["tasksUpdated"] = Json(cls->tasksUpdated);
    Json off = Json::array();
    for (const std::string& id : cls->off) off.push(Json(id));
    b["off"] = std::move(off);
    b["profile"] = Json(cls->profile);
    return reply;
}

ApiReply version(const Context& c) {
    ApiReply reply;
    reply.body["version"] = Json(c.settings.latestVersion);
    reply.body["url"] = Json(c.settings.downloadUrl);
    return reply;
}

ApiReply tasks(const Context& c) {
    ApiReply reply;
    const std::optional<ClassInfo> cls = classOf(c, reply);
    if (!cls) return reply;
    Json list = Json::array();
    for (const Task& t : c.storage.tasksOf(cls->id)) list.push(taskJson(t));
    reply.body["tasks"] = std::move(list);
    reply.body["updated"] = Json(cls->tasksUpdated);
    return reply;
}

ApiReply answer(const Context& c) {
    ApiReply reply;
    const std::optional<ClassInfo> cls = classOf(c, reply);
    if (!cls) return reply;
    Answer a;
    if (!text(c.request, "uid", a.uid, reply) || !text(c.request, "name", a.name, reply) ||
        !text(c.request, "id", a.taskId, reply) || !text(c.request, "status", a.status, reply) ||
        !text(c.request, "answer", a.answer, reply, false))
        return reply;
    if (a.status != "done" && a.status != "question")
        return apiError(400, "\"status\" skal være \"done\" eller \"question\".");
    if (a.uid.size() > kMaxId || a.taskId.size() > kMaxId) return apiError(400, "Forespørgslen kunne ikke læses.");
    if (a.name.size() > kMaxName) return apiError(400, "Navnet er for langt.");
    if (a.answer.size() > kMaxAnswer) return apiError(400, "Svaret er for langt – skriv det kortere.");
    if (!c.storage.task(cls->id, a.taskId))
        return apiError(404, "Opgaven findes ikke længere. Tryk »Hent opgaver igen«.");
    a.at = c.now;
    c.storage.addAnswer(cls->id, a);
    return reply;
}

ApiReply classStats(const Context& c) {
    ApiReply reply;
    const std::optional<ClassInfo> cls = classOf(c, reply);
    if (!cls) return reply;
    std::string uid;
    if (!text(c.request, "uid", uid, reply)) return reply;
    if (uid.size() > kMaxId) return apiError(400, "Forespørgslen kunne ikke læses.");
    if (!c.request.at("topics").isObject()) return apiError(400, missing("topics"));
    if (!cls->stats) return reply; // the teacher has said no since the student's check-in
    Json summary = c.request;
    summary.obj.erase("key");
    c.storage.putStats(cls->id, {uid, Json::dump(summary, 0), c.now});
    return reply;
}

// Reports need no class; a code that is given must be right.
ApiReply report(const Context& c, const std::string& kind) {
    ApiReply reply;
    int64_t classId = 0;
    const std::string& code = c.request.at("key").asString();
    if (!code.empty()) {
        const std::optional<ClassInfo> cls = classOf(c, reply);
        if (!cls) return reply;
        classId = cls->id;
    }
    Json body = c.request;
    body.obj.erase("key");
    c.storage.addReport(kind, classId, Json::dump(body, 0), c.now);
    return reply;
}

ApiReply telemetry(const Context& c) {
    const std::string& kind = c.request.at("kind").asString();
    if (kind != "usage" && kind != "crash") return apiError(400, missing("kind"));
    return report(c, "telemetry:" + kind);
}

} // namespace

std::string normaliseCode(const std::string& typed) {
    std::string out;
    for (char ch : typed) {
        if (ch == ' ' || ch == '-' || ch == '\t') continue;
        out += (ch >= 'a' && ch <= 'z') ? static_cast<char>(ch - 'a' + 'A') : ch;
    }
    return out;
}

ApiReply apiError(int status, const std::string& text) {
    ApiReply reply;
    reply.status = status;
    reply.body["error"] = Json(text);
    return reply;
}

ApiReply handleApi(Storage& storage, const ApiSettings& settings, const std::string& path, const std::string& body,
                   double now) {
    using Handler = std::function<ApiReply(const Context&)>;
    static const std::map<std::string, Handler> handlers = {
        {"/check", check},
        {"/version", version},
        {"/tasks", tasks},
        {"/tasks/answer", answer},
        {"/classstats", classStats},
        {"/telemetry", telemetry},
        {"/bug", [](const Context& c) { return report(c, "bug"); }},
    };
    const auto handler = handlers.find(path);
    if (handler == handlers.end()) return apiError(404, "Ukendt adresse.");
    Json request;
    if (!Json::tryParse(body, request) || !request.isObject())
        return apiError(400, "Forespørgslen kunne ikke læses: den er ikke et JSON-objekt.");
    return handler->second(Context{storage, settings, request, now});
}

} // namespace server
