// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// The text of the operating system for the error \a code in its neutral language, as it comes: of several
/// lines perhaps, at most 2048 characters, empty where it has none. From any thread.
QString SystemMessage(unsigned code);
