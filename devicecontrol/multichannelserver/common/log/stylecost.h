// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QHash>
#include <QtCore/QString>

/// What the style sheets of a text cost each of its elements when it is read as HTML, in ns and rather too
/// much. Every element is held against the rules for elements of its name, and against those for any.
class StyleCost {
  public:
    /// Of an element, and of those in which it stands: they are held against the rules once more for it.
    struct Share {
        qint64 matching = 0;      ///< ns
        qint64 declarations = 0;  ///< that may come of it
    };

    /// Adds a style sheet.
    void Add(const QString& sheet);
    int CountSheets() const { return m_sheets; }
    /// \a steps: how many elements a rule may be led to from this one.
    Share Of(const QString& name, int attributes, int steps) const;

  private:
    struct Rules {
        qint64 rules = 0;
        qint64 chains = 0;  ///< rules that lead from one element to others
        qint64 declarations = 0;
    };

    void AddSelector(const QString& selector, qint64 declarations);

    int m_sheets = 0;
    Rules m_ofAny;
    QHash<QString, Rules> m_ofName;
};
