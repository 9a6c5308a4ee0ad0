// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>

/// Marks what MultiChannelServerPlatform exports. Nothing else of that library is visible outside of it.
#if defined(MCS_BUILDING_PLATFORM)
#define MCS_PLATFORM_EXPORT Q_DECL_EXPORT
#else
#define MCS_PLATFORM_EXPORT Q_DECL_IMPORT
#endif

/// The same for instances of templates: one mark for their declaration in the header, one for their
/// definition in the source. Compilers want the export at the one place or at the other.
#if defined(MCS_BUILDING_PLATFORM) && defined(_MSC_VER)
#define MCS_PLATFORM_DECLARE_INSTANCE
#define MCS_PLATFORM_DEFINE_INSTANCE MCS_PLATFORM_EXPORT
#else
#define MCS_PLATFORM_DECLARE_INSTANCE MCS_PLATFORM_EXPORT
#define MCS_PLATFORM_DEFINE_INSTANCE
#endif
