// A save refused by the disk, for the tests of what a failed save keeps. Root
// passes every permission check, so a read-only folder needs the test to act
// as "nobody" for the moment.
#pragma once

#include <gtest/gtest.h>

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

// Drops root's effective ids for its lifetime; the saved set-user-ID brings
// them back. Does nothing for an ordinary user, whom permissions stop anyway.
class AsNobody {
  public:
    static uid_t uid() {
        const passwd* pw = getpwnam("nobody");
        return pw ? pw->pw_uid : 65534;
    }
    AsNobody() {
        if (geteuid() != 0) return;
        active = setegid(uid()) == 0 && seteuid(uid()) == 0;
        EXPECT_TRUE(active) << "could not drop root";
    }
    ~AsNobody() {
        if (active && (seteuid(0) != 0 || setegid(0) != 0)) std::abort();
    }
    AsNobody(const AsNobody&) = delete;
    AsNobody& operator=(const AsNobody&) = delete;

  private:
    bool active = false;
};
