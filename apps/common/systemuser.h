// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// The name of the user whom this process belongs to, as the system knows it; "?" where it tells none.
QString SystemUser();
