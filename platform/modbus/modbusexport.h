// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>

/// Marks what MultiChannelServerModbus exports. Nothing else of that library is visible outside of it.
#if defined(MCS_BUILDING_MODBUS)
#define MCS_MODBUS_EXPORT Q_DECL_EXPORT
#else
#define MCS_MODBUS_EXPORT Q_DECL_IMPORT
#endif
