// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/namekey.h>

#include <QtCore/QStringView>

namespace values {

/// Walks the non-empty segments of a path text, which must outlive the walk. Allocates nothing.
class PathSegments {
  public:
    explicit PathSegments(QStringView path) : m_position(path.begin()), m_end(path.end()) {}

    /// Goes to the next segment; false at the end of the path.
    bool Next() {
        while (m_position != m_end && *m_position == QLatin1Char('/'))
            ++m_position;
        return m_position != m_end;
    }
    /// The name there, which the walk then passes.
    NameKey Take() {
        const NameKey key(QStringView(m_position, m_end));
        m_position = key.Text().end();
        return key;
    }

  private:
    const QChar* m_position;
    const QChar* m_end;
};

}  // namespace values
