// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QStringView>

#include <cstdint>

namespace values {

/// Hash of an item's name, keyed with numbers that are drawn once per process. Not qHash: that one is linear
/// in its seed, so that names which collide in one process collide in all, and a peer could choose such
/// names.
std::uint32_t NameHash(QStringView name);

}  // namespace values
