// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/wire/cborhead.h>
#include <platform/vtclient/wire/content.h>

#include <QtCore/QString>

#include <array>
#include <cstring>
#include <limits>
#include <vector>

namespace vt {

/// Reads a message element by element and remembers the first thing that was wrong with it. Once something is
/// wrong every further read fails too, so that callers look once, at the end.
///
/// Reads by itself what messages are made of nearly always, and leaves texts with other characters than
/// ASCII, or in parts, to Qt's reader. That one allocates for every message, and calls several functions for
/// every number.
class CborInput {
  public:
    /// \a data stays valid while this is used.
    CborInput(const char* data, qint64 size);

    bool HasFailed() const { return m_error != nullptr; }
    QString Error() const { return QString::fromLatin1(m_error); }
    /// \a what is a constant. Always false.
    bool Fail(const char* what);

    /// Enters and leaves an array. Leave fails if elements are left.
    bool Enter();
    bool Leave();
    /// Whether the array that was entered has a further element. False once something is wrong.
    bool HasNext();
    bool IsArray() const { return m_head.type == CborHead::Array; }

    bool Unsigned(quint64 maximum, quint64* number);
    bool Id(quint32* id);
    bool Integer(qint64* number);
    bool Boolean(bool* content);
    bool Double(double* number);  ///< an integer will do
    /// A text of at most \a maximum UTF-16 code units.
    bool Text(int maximum, QString* text);
    bool ReadContent(Content* content);
    /// The list of a selection's choices.
    bool Choices(std::vector<Choice>* choices);
    /// What an item is, from its kind on.
    bool Item(ItemDescription* item);

    /// An id and a content that is a number, in one go. False, and nothing read, if something else comes.
    bool NumberChange(quint32* id, Content* content);

    /// Fails unless the whole input was read.
    bool Finish();

  private:
    static constexpr int MaxDepth = 4;  // a message, a change in it, a list in that
    static constexpr quint64 Unknown = std::numeric_limits<quint64>::max();

    bool ListContent(Content* content);
    bool TextByQt(int maximum, QString* text, const quint8** end);
    double FloatOfHead() const;
    bool Next();
    bool GoTo(const quint8* next);

    const quint8* m_at;  ///< where the current element begins
    const quint8* m_end;
    CborHead m_head;                          ///< of the current element
    int m_depth = 0;                          ///< how many arrays were entered
    bool m_isAtEnd = false;                   ///< of the array that was entered last
    bool m_isBroken = false;                  ///< what comes next is no element
    std::array<quint64, MaxDepth> m_left{1};  ///< elements of each, from the current one on
    const char* m_error = nullptr;
};

// In the header: whoever reads millions of changes has it in its loop.
inline bool CborInput::GoTo(const quint8* next) {
    m_at = next;
    quint64& left = m_left[static_cast<std::size_t>(m_depth)];
    if (left == Unknown)
        m_isAtEnd = m_at != m_end && *m_at == CborHead::Break;
    else
        m_isAtEnd = --left == 0;
    if (m_isAtEnd) {
        m_head = CborHead();
        return true;
    }
    m_isBroken = !m_head.Read(m_at, m_end);
    return !m_isBroken;
}

inline bool CborInput::NumberChange(quint32* id, Content* content) {
    // Arrays that tell their length are rare.
    if (m_head.type != CborHead::Unsigned || m_left[static_cast<std::size_t>(m_depth)] != Unknown)
        return false;
    constexpr auto MaxInteger = static_cast<quint64>(std::numeric_limits<qint64>::max());
    CborHead number;
    CborHead following;
    const quint8* const at = m_at + m_head.size;
    if (m_head.argument > std::numeric_limits<quint32>::max() || !number.Read(at, m_end)) return false;
    const quint8* const next = at + number.size;
    const bool isAtEnd = next != m_end && *next == CborHead::Break;
    if (!isAtEnd && !following.Read(next, m_end)) return false;
    if (number.type <= CborHead::Negative && number.argument <= MaxInteger) {
        const auto integer = static_cast<qint64>(number.argument);
        *content = number.type == CborHead::Unsigned ? integer : -1 - integer;
    } else if (number.type == CborHead::Simple && number.info == CborHead::DoubleFloat) {
        double real = 0.0;
        std::memcpy(&real, &number.argument, sizeof real);
        *content = real;
    } else {
        return false;
    }
    *id = static_cast<quint32>(m_head.argument);
    m_at = next;
    m_isAtEnd = isAtEnd;
    m_head = following;
    return true;
}

}  // namespace vt
