// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

namespace values {
class TreeItem;
}

namespace mctree {

/// What is waited for: that an item is there, or that its content compares with another in some way.
class Condition {
  public:
    /// Reads "exists", or one of = != < <= > >= with a content as it is set, or "~" with a glob that the
    /// content is to match.
    /// \return what is wrong with \a text, in one line; empty if nothing is.
    QString Parse(const QString& text);

    /// Whether the condition holds for \a item, which is there. If it can never be told, \a error says why,
    /// in one line.
    bool Holds(const values::TreeItem& item, QString* error) const;

  private:
    enum class EKind { Exists, Equal, Unequal, Less, LessOrEqual, Greater, GreaterOrEqual, Like };
    struct Operator;

    bool Compares(const values::TreeItem& item, QString* error) const;

    EKind m_kind = EKind::Exists;
    QString m_content;
};

}  // namespace mctree
