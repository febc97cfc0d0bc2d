// The store in a fresh file of its own for each test, and a restart that
// reads it back as the next start of the program would.
#pragma once

#include "store/datastore.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

class TempStoreTest : public ::testing::Test {
  protected:
    void SetUp() override {
        std::string tmpl = (std::filesystem::temp_directory_path() / "store_test_XXXXXX").string();
        ASSERT_NE(mkdtemp(tmpl.data()), nullptr);
        dir_ = tmpl;
        DataStore::instance().resetForTest();
        DataStore::instance().setPath((dir_ / "data.json").string());
    }
    void TearDown() override {
        DataStore::instance().resetForTest();
        std::filesystem::remove_all(dir_);
    }
    virtual void restart() {
        DataStore::instance().resetForTest();
        DataStore::instance().setPath((dir_ / "data.json").string());
        ASSERT_TRUE(DataStore::instance().load());
    }
    std::filesystem::path dir_;
};
