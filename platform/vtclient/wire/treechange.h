// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/wire/content.h>

namespace vt {

/// What happened, by its number on the wire. Changed (of content) has none: it travels without
/// wrapping.
enum class EChange : std::uint8_t { Added = 0, Removed = 1, Described = 2, Items = 3, Own = 4, Changed = 5 };

/// One change of one item of a subscription. Which members count depends on the change. Made to be used again
/// for the next change, so that nothing is allocated for numbers.
struct TreeChange {
    EChange change = EChange::Changed;
    quint32 id = 0;
    quint32 parent = 0;    ///< Added
    QString name;          ///< Added, Described
    ItemDescription item;  ///< Added; Described: flags and limits; Items: content and choices; else content
    int session = 0;       ///< Own: whose write it was
};

}  // namespace vt
