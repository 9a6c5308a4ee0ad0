// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/errorhandler.h>

#include <cstddef>

namespace trace {

namespace detail {

/// The path of this file as the compiler writes it, and how much of it is the path of the folder that holds
/// all sources.
constexpr const wchar_t* ThisFile = L"" __FILE__;
constexpr std::size_t RootLength = (sizeof(L"" __FILE__) - sizeof(L"platform/app/trace.h")) / sizeof(wchar_t);

constexpr bool IsSeparator(wchar_t character) {
    return character == L'/' || character == L'\\';
}

}  // namespace detail

/// The place of a source as traces name it: its path below the root of the sources, without the extension,
/// and with "/" on every system. Found out while compiling, so that no path of the machine that compiled is
/// left in a program.
template <std::size_t size>
class Place {
  public:
    explicit constexpr Place(const wchar_t (&file)[size]) {
        const std::size_t from = IsBelowRoot(file) ? detail::RootLength : 0;
        std::size_t end = size - 1;
        for (std::size_t i = from; i < size - 1; ++i) {
            if (file[i] == L'.') end = i;
            if (detail::IsSeparator(file[i])) end = size - 1;  // a dot before it was a folder's
        }
        for (std::size_t i = from; i < end; ++i)
            m_path[i - from] = detail::IsSeparator(file[i]) ? L'/' : file[i];
    }                                                         ///< \a file is `__FILE__`
    constexpr const wchar_t* Path() const { return m_path; }  ///< ends with 0; lives as long as this

  private:
    static constexpr bool IsBelowRoot(const wchar_t (&file)[size]) {
        if (size <= detail::RootLength) return false;
        for (std::size_t i = 0; i < detail::RootLength; ++i) {
            const wchar_t root = detail::ThisFile[i];
            const bool areSeparators = detail::IsSeparator(file[i]) && detail::IsSeparator(root);
            if (file[i] != root && !areSeparators) return false;
        }
        return true;
    }

    wchar_t m_path[size] = {};
};

}  // namespace trace

/// Reports \a message (a QString, built only if it is wanted) as a failure at run time, from where this
/// stands. For whatever has no fixed place.
#define MCS_TRACE(message)                                                    \
    do {                                                                      \
        if (ErrorHandler::Instance().IsTraced(ErrorHandler::TraceWarnings)) { \
            static constexpr trace::Place mcsPlace(L"" __FILE__);             \
            _Q_Trace((message), mcsPlace.Path(), __LINE__);                   \
        }                                                                     \
    } while (false)

/// The same for what \a source, a host, caused from outside and could cause again and again.
#define MCS_TRACE_OF(source, message)                                         \
    do {                                                                      \
        if (ErrorHandler::Instance().IsTraced(ErrorHandler::TraceWarnings)) { \
            static constexpr trace::Place mcsPlace(L"" __FILE__);             \
            TraceOf((source), (message), mcsPlace.Path(), __LINE__);          \
        }                                                                     \
    } while (false)

/// Reports that \a condition, which is looked at once, does not hold, likewise. Execution goes on.
#define MCS_ASSERT(condition)                                                                   \
    do {                                                                                        \
        if (!(condition) && ErrorHandler::Instance().IsTraced(ErrorHandler::TraceAssertions)) { \
            static constexpr trace::Place mcsPlace(L"" __FILE__);                               \
            _Q_assert(L"" #condition, mcsPlace.Path(), __LINE__);                               \
        }                                                                                       \
    } while (false)
