// Small pieces of the teacher's pages: escaping, times as a Danish reader
// writes them, and the frame around every page. Every text that a teacher or
// student typed passes through esc() on its way into a page.
#pragma once

#include <string>

namespace server {

std::string esc(const std::string& text);
// "d.M.yyyy HH:mm" in the server's local time.
std::string danishTime(double secondsSinceEpoch);
// "2026-11-20" → "20.11.2026"; "" when it isn't such a date.
std::string danishDate(const std::string& isoDate);

struct Frame {
    std::string title;       // of the page, without the site's name
    std::string teacherName; // "" when nobody is signed in
    std::string csrf;        // for the sign-out form
};
std::string page(const Frame& frame, const std::string& body);

// A hidden CSRF field.
std::string csrfField(const std::string& token);

} // namespace server
