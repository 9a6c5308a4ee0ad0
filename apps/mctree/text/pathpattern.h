// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

namespace mctree {

/// A path as it is typed: names separated by "/". A name may be a glob, and "**" stands for any number of
/// names, at the end for all that is below.
class PathPattern {
  public:
    enum class EReading { Globs, AsItStands };

    /// Reads \a text. A "/" in front may be missing, and empty names do not count.
    /// \return what is wrong with it, in one line; empty if nothing is.
    QString Parse(const QString& text, EReading reading);

    bool IsGlob() const { return m_isGlob; }
    /// The pattern itself, normalised.
    const QString& Text() const { return m_text; }
    /// What lies in front of the first glob, "/" for the root: all that matches is there or below. Without a
    /// glob the path itself.
    const QString& FixedPath() const { return m_fixedPath; }

    // Of paths in the server's tree.
    bool Matches(const QString& path) const;
    /// Whether \a path, or something that it lies below, matches.
    bool MatchesAtOrAbove(const QString& path) const;
    /// Whether something at or below \a path may match.
    bool MayMatchBelow(const QString& path) const;

  private:
    struct Part {
        QString text;
        bool isGlob;
        bool isAnyDepth;  ///< "**"
    };
    /// Which parts may stand for the next name; the last element: none, all have been used.
    using Places = std::vector<bool>;

    static void Enter(Places& places, const std::vector<Part>& parts, std::size_t place);
    Places After(const Places& places, const QString& name) const;
    Places Start() const;

    std::vector<Part> m_parts;
    QString m_text = QStringLiteral("/");
    QString m_fixedPath = QStringLiteral("/");
    bool m_isGlob = false;
};

}  // namespace mctree
