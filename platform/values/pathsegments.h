// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QStringView>

#include <algorithm>

namespace values {

/// Walks the non-empty segments of a path text, which must outlive the walk. Allocates nothing.
class PathSegments {
  public:
    explicit PathSegments(QStringView path) : m_position(path.begin()), m_end(path.end()) {}

    /// Goes to the next segment; false at the end of the path.
    bool Next() {
        while (m_position != m_end && *m_position == Separator)
            ++m_position;
        if (m_position == m_end) return false;
        const QChar* const end = std::find(m_position, m_end, Separator);
        m_segment = QStringView(m_position, end);
        m_position = end;
        return true;
    }
    QStringView Segment() const { return m_segment; }

  private:
    static constexpr QChar Separator = QLatin1Char('/');

    const QChar* m_position;
    const QChar* m_end;
    QStringView m_segment;
};

}  // namespace values
