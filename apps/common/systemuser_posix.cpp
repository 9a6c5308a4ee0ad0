// SPDX-License-Identifier: Apache-2.0
#include <apps/common/systemuser.h>

#include <pwd.h>
#include <unistd.h>

// Who the process belongs to, not who logged in where it was started: environments can say anything. Not from
// several threads.
QString SystemUser() {
    const passwd* const user = ::getpwuid(::geteuid());
    return user != nullptr && user->pw_name != nullptr ? QString::fromLocal8Bit(user->pw_name)
                                                       : QStringLiteral("?");
}
