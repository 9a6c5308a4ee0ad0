// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>

/// Marks what MultiChannelServerConnection exports. Nothing else of that library is visible outside of it.
#if defined(MCS_BUILDING_CONNECTION)
#define MCS_CONNECTION_EXPORT Q_DECL_EXPORT
#else
#define MCS_CONNECTION_EXPORT Q_DECL_IMPORT
#endif
