// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/node.h>
#include <platform/values/valuebase.h>
#include <platform/vtclient/client/mirrorrecord.h>

#include <QtCore/QString>

/// What the sources of TreeMirror share.
namespace vt::treemirrordetail {

inline values::ValueBase& ValueOf(const MirrorRecord& record) {
    return static_cast<values::ValueBase&>(*record.item);
}

inline values::Node& NodeOf(const MirrorRecord& record) {
    return static_cast<values::Node&>(*record.item);
}

inline bool Fail(QString* error, const QString& what) {
    *error = what;
    return false;
}

}  // namespace vt::treemirrordetail
