#include "server/html.h"

#include <cstdio>
#include <ctime>

namespace server {

std::string esc(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (char c : text) {
        switch (c) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '"': out += "&quot;"; break;
        case '\'': out += "&#39;"; break;
        default: out += c;
        }
    }
    return out;
}

std::string danishTime(double secondsSinceEpoch) {
    const std::time_t t = static_cast<std::time_t>(secondsSinceEpoch);
    std::tm local{};
    localtime_r(&t, &local);
    char buf[40];
    std::snprintf(buf, sizeof buf, "%d.%d.%d %02d:%02d", local.tm_mday, local.tm_mon + 1, local.tm_year + 1900,
                  local.tm_hour, local.tm_min);
    return buf;
}

std::string danishDate(const std::string& iso) {
    int y = 0, m = 0, d = 0;
    char tail = 0;
    if (iso.size() != 10 || std::sscanf(iso.c_str(), "%4d-%2d-%2d%c", &y, &m, &d, &tail) != 3) return {};
    if (y < 2000 || y > 2200 || m < 1 || m > 12 || d < 1 || d > 31) return {};
    return std::to_string(d) + "." + std::to_string(m) + "." + std::to_string(y);
}

std::string csrfField(const std::string& token) {
    return "<input type=\"hidden\" name=\"csrf\" value=\"" + esc(token) + "\">";
}

std::string page(const Frame& frame, const std::string& body) {
    std::string head = "<!doctype html>\n<html lang=\"da\"><head><meta charset=\"utf-8\">"
                       "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">"
                       "<title>" + esc(frame.title) + " – Ostrovalden Skole</title>"
                       "<link rel=\"stylesheet\" href=\"/static/site.css\">"
                       "<script src=\"/static/site.js\" defer></script></head><body>";
    std::string bar = "<header class=\"bar\"><a class=\"brand\" href=\"/\">Ostrovalden Skole "
                      "<span>Lærer</span></a>";
    if (!frame.teacherName.empty())
        bar += "<form method=\"post\" action=\"/logud\" enctype=\"multipart/form-data\" class=\"who\">" +
               csrfField(frame.csrf) + "<span>" + esc(frame.teacherName) +
               "</span><button class=\"link\" type=\"submit\">Log ud</button></form>";
    bar += "</header>";
    return head + bar + "<main>" + body + "</main></body></html>";
}

} // namespace server
