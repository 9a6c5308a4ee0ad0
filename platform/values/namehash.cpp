// SPDX-License-Identifier: Apache-2.0
#include <platform/values/namehash.h>

#include <QtCore/QHash>

std::uint32_t values::NameHash(QStringView name) {
    static const uint seed = static_cast<uint>(qGlobalQHashSeed());
    return qHash(name, seed);
}
