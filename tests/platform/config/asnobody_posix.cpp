// SPDX-License-Identifier: Apache-2.0
// Linked into a program, makes it run as a user that owns nothing: the superuser may anything. It gives its
// rights up by itself, and only once it is loaded, since nobody may not read every directory that programs
// are built in.
#include <grp.h>
#include <unistd.h>

#include <cstdlib>

namespace {

constexpr uid_t Nobody = 65534;

const bool isNobody = [] {
    if (geteuid() != 0) return true;
    if (setgroups(0, nullptr) != 0 || setgid(Nobody) != 0 || setuid(Nobody) != 0) std::abort();
    return true;
}();

}  // namespace
