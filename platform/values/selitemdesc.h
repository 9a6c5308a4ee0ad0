// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/platformexport.h>

#include <QtCore/QString>

#include <type_traits>

namespace values {

class ValueSelection;

/// What tells the choices of a selection apart. 64 bits on every system, since all of them meet in one tree:
/// long where that has them.
using SelectionKey = std::conditional_t<sizeof(long) == sizeof(qint64), long, qint64>;

/// One entry of a fixed table of choices. Tables are compile-time constants, usable at any time.
class MCS_PLATFORM_EXPORT SelItemDesc {
  public:
    /// \a text is UTF-8 and lives as long as the program.
    constexpr SelItemDesc(const char* text, double value, SelectionKey key)
        : m_text(text), m_value(value), m_key(key) {}

    QString String() const { return QString::fromUtf8(m_text); }  ///< its text
    double Value() const { return m_value; }                      ///< its number
    SelectionKey Key() const { return m_key; }                    ///< its key

    /// Adds the \a count items of the table \a items to \a selection, in table order, as one change. An item
    /// whose key the selection already has takes the table's text and number instead of being doubled. The
    /// current item stays the current item; nothing is selected.
    static void AddItems(const SelItemDesc* items, int count, ValueSelection* selection);

  private:
    const char* m_text;
    double m_value;
    SelectionKey m_key;
};

}  // namespace values
