// SPDX-License-Identifier: Apache-2.0
// Light clients of the connection's benchmark, in a process of theirs. They speak to NATS by what the library
// keeps to itself, so they are a program of their own, and the others measure the library as it is delivered.
#include "lightclients.h"

#include <QtCore/QCoreApplication>

namespace bench {

const std::vector<RoleEntry>& AllRoles() {
    static const std::vector<RoleEntry> roles = {RoleEntry::Of<LightClients>("light-clients")};
    return roles;
}

}  // namespace bench

int main(int argc, char** argv) {
    qputenv("QT_NO_GLIB", "1");
    const QCoreApplication application(argc, argv);
    return bench::Role::Run(QCoreApplication::arguments().mid(2));
}
