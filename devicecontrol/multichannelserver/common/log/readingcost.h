// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/log/htmltag.h>
#include <devicecontrol/multichannelserver/common/log/stylecost.h>

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

class MarkupScanner;

/// About how long the text area takes to read a text as HTML, before anything is laid out: in ns, measured,
/// and rather too long. Its reader looks back at every tag along all elements in which the tag stands, at
/// every image along the paragraph, and makes all cells that a table may have: what costs a microsecond for
/// once can cost minutes. Anybody who may log chooses the text.
///
/// Follows the reader element by element, with its ideas of what may stand where.
class ReadingCost {
  public:
    /// Counts until \a limit is exceeded.
    ReadingCost(const QString& html, qint64 limit);

    qint64 Get() const { return m_cost; }

  private:
    using EKind = HtmlTag::EKind;

    struct Element {
        int name = 0;  ///< of m_names
        EKind kind = EKind::Other;
        bool isBlock = false;
        bool isHidden = false;
        int parent = 0;
        int depth = 0;
        int children = 0;
        int attributes = 0;
        int table = 0;           ///< the innermost: of m_tables
        StyleCost::Share style;  ///< of all elements from the outermost to this one
    };
    struct Table {
        qint64 rows = 0;
        qint64 cellsInRow = 0;
        qint64 cellsInLongestRow = 0;
        qint64 reachingDown = 0;  ///< cells in the next rows that spans take
    };

    Element& At(int element) { return m_elements[static_cast<std::size_t>(element)]; }
    const Element& At(int element) const { return m_elements[static_cast<std::size_t>(element)]; }
    Table& TableAt(int table) { return m_tables[static_cast<std::size_t>(table)]; }

    void AddText(const QStringRef& text);
    void Open(const MarkupScanner& tag);
    void Close(const QString& name);
    int FindParent(const QString& name, EKind kind);
    int NumberOf(const QString& name);
    int StepsUp(int element, int above) const;
    int FindAround(int element, EKind kind) const;
    int Add(const QString& name, int parent, int attributes);
    void AddImage();
    void AddCell(const MarkupScanner& tag, int table);
    void AddToTable(int table, qint64 rows, qint64 cells);
    void ReadSheet();
    void Weigh(Element& element) const;

    QStringList m_names = {QString()};
    QHash<QString, int> m_numbers;                  ///< of the names
    std::vector<Element> m_elements = {Element()};  ///< the first holds the others
    std::vector<Table> m_tables = {Table()};        ///< the first is all of them, and what stands in none
    StyleCost m_styles;
    QString m_sheet;
    int m_current = 0;
    qint64 m_cost = 0;
    qint64 m_before = 0;  ///< characters so far: it is not certain what begins a paragraph
    /// Whether styles may have changed what may stand where. From then on every element is taken to stand in
    /// all those before it, and every cell to be in one table.
    bool m_isUnsure = false;
    qint64 m_items = 0;  ///< of all lists
};
