// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>

/// Marks what MultiChannelServerPlatformGui exports. Nothing else of that library is visible outside of it.
#if defined(MCS_BUILDING_WIDGETS)
#define MCS_WIDGETS_EXPORT Q_DECL_EXPORT
#else
#define MCS_WIDGETS_EXPORT Q_DECL_IMPORT
#endif
