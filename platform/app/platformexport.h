// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>

/// Marks what MultiChannelServerPlatform exports. Nothing else of that library is visible outside of it.
#if defined(MCS_BUILDING_PLATFORM)
#define MCS_PLATFORM_EXPORT Q_DECL_EXPORT
#else
#define MCS_PLATFORM_EXPORT Q_DECL_IMPORT
#endif

/// The same for instances of templates: MCS_PLATFORM_DECLARE_INSTANCE(Value<int>); in the header, one mark
/// for the definition in the source. Compilers want the export at the one place or at the other. MinGW's
/// exports no member that is defined in the class, and would import it all the same: there, whoever includes
/// the header makes its own.
#if defined(MCS_BUILDING_PLATFORM) && defined(_MSC_VER)
#define MCS_PLATFORM_DECLARE_INSTANCE(...) extern template class __VA_ARGS__
#define MCS_PLATFORM_DEFINE_INSTANCE MCS_PLATFORM_EXPORT
#elif !defined(MCS_BUILDING_PLATFORM) && defined(__MINGW32__)
#define MCS_PLATFORM_DECLARE_INSTANCE(...) static_assert(true)
#define MCS_PLATFORM_DEFINE_INSTANCE
#else
#define MCS_PLATFORM_DECLARE_INSTANCE(...) extern template class MCS_PLATFORM_EXPORT __VA_ARGS__
#define MCS_PLATFORM_DEFINE_INSTANCE
#endif
