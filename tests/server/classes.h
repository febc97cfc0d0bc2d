// A class in a test database, with a teacher of its own.
#pragma once

#include "server/storage.h"

#include <string>

namespace testsupport {

// `c` with the code and a fresh teacher; the new class's id.
inline int64_t addClass(server::Storage& db, const std::string& code, server::ClassInfo c = {}) {
    c.teacherId = db.addTeacher({0, code + "@skole.dk", "Lærer", "x"});
    c.name = "Klasse " + code;
    c.code = code;
    return db.addClass(c);
}

} // namespace testsupport
