// Disks that refuse to take a save, for the tests of what a failed save keeps.
// Root passes every permission check, so a read-only folder needs the test to
// act as "nobody" for the moment; a full disk is a small tmpfs where the
// machine lets a test mount one.
#pragma once

#include <gtest/gtest.h>

#include <pwd.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

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

// A 64 KiB tmpfs on `at` for its lifetime. `refused` holds why there is none.
class SmallDisk {
  public:
    explicit SmallDisk(const std::filesystem::path& at) : at(at) {
        std::filesystem::create_directories(at);
        if (mount("tmpfs", at.c_str(), "tmpfs", 0, "size=64k") == 0)
            mounted = true;
        else
            refused = std::strerror(errno);
    }
    ~SmallDisk() {
        if (mounted) umount2(at.c_str(), MNT_DETACH);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool mounted = false;
    std::string refused;

  private:
    std::filesystem::path at;
};
