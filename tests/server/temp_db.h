// Test class databases: a class with a teacher of its own, and a database in
// a fresh folder of its own with one class, code AAAA2222, and one task, "t1".
#pragma once

#include "server/storage.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
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

class TempDbTest : public ::testing::Test {
  protected:
    void SetUp() override {
        std::string tmpl = (std::filesystem::temp_directory_path() / "ostro_db_XXXXXX").string();
        ASSERT_TRUE(mkdtemp(tmpl.data()));
        dir = tmpl;
        db = server::openSqlite(path());
        a = testsupport::addClass(*db, "AAAA2222");
        db->addTask({"t1", a, "Kun for 1A", "", "", "both", "", 0}, 1000);
    }
    void TearDown() override {
        db.reset();
        std::filesystem::remove_all(dir);
    }
    std::string path() const { return (dir / "k.db").string(); }

    std::filesystem::path dir;
    std::unique_ptr<server::Storage> db;
    int64_t a = 0;
};
