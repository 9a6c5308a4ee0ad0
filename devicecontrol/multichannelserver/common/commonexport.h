// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>

/// Marks what MultiChannelServerCommon exports. Nothing else of that library is visible outside of it.
#if defined(MCS_BUILDING_COMMON)
#define MCS_COMMON_EXPORT Q_DECL_EXPORT
#else
#define MCS_COMMON_EXPORT Q_DECL_IMPORT
#endif
