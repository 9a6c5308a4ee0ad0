// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// Whether \a name can be the name of an MpxORV: 1 to 128 printable characters without "/", "<", ">" and ",",
/// no blanks around it, and neither "." nor "..", which mean something else in paths elsewhere.
bool IsMpxOrvName(const QString& name);
