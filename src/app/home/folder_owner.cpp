// Acting as the owner of a folder.
#include "app/home/folder_owner.h"

#include "core/path_text.h"

#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>

bool BecomeOwnerOf(const QString& folder) {
    struct stat status {};
    if (::geteuid() != 0 || ::stat(BytesOfPath(folder).constData(), &status) != 0 || status.st_uid == 0) {
        return true;
    }
    struct passwd entry {};
    struct passwd* user = nullptr;
    std::array<char, 4096> text{};
    ::getpwuid_r(status.st_uid, &entry, text.data(), text.size(), &user);
    const gid_t group = user != nullptr ? user->pw_gid : status.st_gid;
    const int groups = user != nullptr ? ::initgroups(user->pw_name, group) : ::setgroups(1, &group);
    return groups == 0 && ::setegid(group) == 0 && ::seteuid(status.st_uid) == 0;
}

bool StayOwner() {
    const gid_t group = ::getegid();
    const uid_t user = ::geteuid();
    return ::setresgid(group, group, group) == 0 && ::setresuid(user, user, user) == 0;
}
