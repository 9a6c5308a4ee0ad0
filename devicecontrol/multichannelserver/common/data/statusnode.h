// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/node.h>

#include <QtCore/QString>

class IObserver;

/// What the objects over a status subtree share.
namespace statusnode {

/// The node at \a basePath, created with any missing ancestors and observed by \a observer. Without one (a
/// value stands in the way) that is asserted as "m_pStaSubtree != NULL" with \a file and \a line, and the
/// process ends: a status object cannot be without its node.
values::Node* Provide(const QString& basePath, IObserver* observer, const wchar_t* file, int line);

}  // namespace statusnode
