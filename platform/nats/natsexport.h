// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>

/// Marks what MultiChannelServerNats exports. Nothing else of that library is visible outside of it.
#if defined(MCS_BUILDING_NATS)
#define MCS_NATS_EXPORT Q_DECL_EXPORT
#else
#define MCS_NATS_EXPORT Q_DECL_IMPORT
#endif
