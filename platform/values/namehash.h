// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QStringView>

#include <cstdint>

namespace values {

/// Hash of an item's name, seeded per process so that a peer cannot choose names that collide.
std::uint32_t NameHash(QStringView name);

}  // namespace values
