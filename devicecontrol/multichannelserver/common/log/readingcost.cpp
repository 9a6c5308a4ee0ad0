// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/log/readingcost.h>

#include <devicecontrol/multichannelserver/common/log/markupscanner.h>

namespace {

// ns each
constexpr qint64 Tag = 3500;
constexpr qint64 TagCharacter = 80;
constexpr qint64 TextCharacter = 25;
constexpr qint64 ParagraphBegun = 4500;    // that a character begins
constexpr qint64 FixedFont = 90000;        // which is looked for by every tag that asks for it
constexpr qint64 SheetCopied = 200;        // is copied for every tag
constexpr qint64 Level = 40;               // of those in which a tag stands
constexpr qint64 CharacterBefore = 18;     // of the text before an image,
constexpr qint64 UnspacedLetter = 45;      // times that for letters whose words a dictionary tells apart
constexpr qint64 Image = 5;                // of these characters
constexpr qint64 ItemBefore = 50;          // of the list before an item
constexpr qint64 TableCell = 20000;        // with the laying out of many
constexpr qint64 DeclarationPairs = 2000;  // per ns: each one that is inherited moves all others

bool IsUnspaced(QChar character) {
    if (character.unicode() < 0x0e00) return false;
    switch (character.script()) {
        case QChar::Script_Khmer:
        case QChar::Script_Lao:
        case QChar::Script_Myanmar:
        case QChar::Script_Thai:
            return true;
        default:
            return false;
    }
}

/// Whether it may make blocks of what is none, or the reverse, also by an escape.
bool MayChangeDisplay(const QString& style) {
    return style.contains(QLatin1String("display"), Qt::CaseInsensitive) || style.contains(QLatin1Char('\\'));
}

qint64 SpanOf(const MarkupScanner& tag, const char* attribute) {
    constexpr qint64 most = 1000000;
    qint64 number = 1;
    for (const MarkupScanner::Attribute& one : tag.GetAttributes())
        if (one.first == QLatin1String(attribute)) number = qBound<qint64>(1, one.second.toInt(), most);
    return number;
}

}  // namespace

ReadingCost::ReadingCost(const QString& html, qint64 limit) {
    MarkupScanner scanner(html);
    while (m_cost <= limit) {
        switch (scanner.Next()) {
            case MarkupScanner::EToken::Text:
                if (At(m_current).kind == EKind::Sheet) m_sheet += scanner.GetSource();
                AddText(scanner.GetSource());
                break;
            case MarkupScanner::EToken::OpeningTag:
                Open(scanner);
                break;
            case MarkupScanner::EToken::ClosingTag:
                Close(scanner.GetName());
                break;
            case MarkupScanner::EToken::Comment:
                break;
            case MarkupScanner::EToken::End:
                return;
        }
    }
}

void ReadingCost::AddText(const QStringRef& text) {
    m_cost += TextCharacter * text.size();
    for (const QChar character : text) {
        m_before += IsUnspaced(character) ? UnspacedLetter : 1;
        if (character == QChar::ParagraphSeparator || character == QLatin1Char('\n'))
            m_cost += ParagraphBegun;
    }
}

void ReadingCost::Open(const MarkupScanner& tag) {
    const QString name = tag.GetName();
    m_cost += Tag + TagCharacter * tag.GetSource().size();
    if (name.isEmpty()) return;  // is forgotten with the next
    for (const MarkupScanner::Attribute& attribute : tag.GetAttributes())
        if (MayChangeDisplay(attribute.second)) m_isUnsure = true;
    const HtmlTag& known = HtmlTag::Of(name);
    const EKind kind = known.kind;
    const int element = Add(name, FindParent(name, kind), static_cast<int>(tag.GetAttributes().size()));
    const Element& added = At(element);
    m_cost += Level * StepsUp(element, 0) + SheetCopied * m_styles.CountSheets() + added.style.matching +
              added.style.declarations * added.style.declarations / DeclarationPairs;
    if (known.isOfFixedFont) m_cost += FixedFont;
    if (kind == EKind::Sheet) m_sheet.clear();
    if (kind == EKind::Item) m_cost += ItemBefore * ++m_items;
    if (kind == EKind::Cell) AddCell(tag, added.table);
    if (kind == EKind::Row) AddToTable(added.table, 1, 0);
    if (kind == EKind::Image) AddImage();
    if (kind == EKind::LineBreak) ++m_before;
    m_current = known.isEmpty || tag.IsClosed() ? added.parent : element;
}

void ReadingCost::AddImage() {
    m_before += Image;
    m_cost += CharacterBefore * m_before;
}

void ReadingCost::Close(const QString& name) {
    m_cost += Tag / 7;
    if (At(m_current).kind == EKind::Sheet) ReadSheet();
    const int number = NumberOf(name);
    int element = m_current;
    while (element != 0 && At(element).name != number)
        element = At(element).parent;
    m_cost += Level * StepsUp(m_current, element);
    if (element == 0) return;  // none such is open
    m_current = At(element).parent;
}

/// How many elements the reader passes by on its way up from \a element to \a above.
int ReadingCost::StepsUp(int element, int above) const {
    return m_isUnsure ? static_cast<int>(m_elements.size()) : At(element).depth - At(above).depth;
}

/// Names are compared along all elements again and again.
int ReadingCost::NumberOf(const QString& name) {
    const auto found = m_numbers.constFind(name);
    if (found != m_numbers.cend()) return found.value();
    m_names << name;
    m_numbers.insert(name, m_names.size() - 1);
    return m_names.size() - 1;
}

int ReadingCost::FindAround(int element, EKind kind) const {
    while (element != 0 && At(element).kind != kind)
        element = At(element).parent;
    return element;
}

/// Where the reader hangs a new element in, and what it makes up around it.
int ReadingCost::FindParent(const QString& name, EKind kind) {
    const auto parentOf = [this](int element) { return At(element).parent; };
    int parent = m_current;
    if (name == QLatin1String("td") && FindAround(parent, EKind::Row) == 0) {
        const int table = Add(QStringLiteral("table"), parent, 0);
        parent = Add(QStringLiteral("tr"), table, 0);
        AddToTable(At(parent).table, 1, 0);
    }
    if (kind == EKind::Row && FindAround(parent, EKind::Table) == 0)
        parent = Add(QStringLiteral("table"), parent, 0);
    if (kind == EKind::Paragraph) {
        int block = parent;
        while (block != 0 && !At(block).isBlock)
            block = parentOf(block);
        if (block != 0 && At(block).kind == EKind::Paragraph) parent = block;
    }
    const bool nestsNot = kind == EKind::Paragraph || kind == EKind::Item;
    if (nestsNot && At(parent).kind == kind) parent = parentOf(parent);
    while (parent != 0 && !HtmlTag::MayStandIn(kind, At(parent).kind))
        parent = parentOf(parent);
    return parent;
}

int ReadingCost::Add(const QString& name, int parent, int attributes) {
    Element& above = At(parent);
    const HtmlTag& known = HtmlTag::Of(name);
    Element element;
    element.name = NumberOf(name);
    element.kind = known.kind;
    element.isHidden = above.isHidden || known.isHidden;
    element.isBlock = known.isBlock && !element.isHidden;
    element.parent = parent;
    element.depth = above.depth + 1;
    element.attributes = attributes;
    element.table = above.table;
    ++above.children;
    if (element.kind == EKind::Table) {
        element.table = static_cast<int>(m_tables.size());
        m_tables.emplace_back();
    }
    if (m_styles.CountSheets() > 0) Weigh(element);
    m_elements.push_back(element);
    return static_cast<int>(m_elements.size()) - 1;
}

void ReadingCost::Weigh(Element& element) const {
    const Element& above = At(element.parent);
    const StyleCost::Share own =
        m_styles.Of(m_names.at(element.name), element.attributes, qMax(element.depth, above.children));
    element.style.matching = above.style.matching + own.matching;
    element.style.declarations = above.style.declarations + own.declarations;
}

void ReadingCost::AddCell(const MarkupScanner& tag, int table) {
    const qint64 columns = SpanOf(tag, "colspan");
    if (SpanOf(tag, "rowspan") > 1) TableAt(table).reachingDown += columns;
    AddToTable(table, 0, columns);
}

/// A table has a cell wherever a row and a column meet.
void ReadingCost::AddToTable(int index, qint64 rows, qint64 cells) {
    Table& table = TableAt(index);
    Table& all = m_tables.front();
    const Table& counted = m_isUnsure ? all : table;
    const qint64 before = counted.rows * counted.cellsInLongestRow;
    table.rows += rows;
    if (rows > 0) table.cellsInRow = table.reachingDown;
    table.cellsInRow += cells;
    table.cellsInLongestRow = qMax(table.cellsInLongestRow, table.cellsInRow);
    if (index != 0) {
        all.rows += rows;
        all.cellsInLongestRow += cells;
    }
    m_cost += TableCell * (counted.rows * counted.cellsInLongestRow - before);
}

/// Those around it are held against the new rules too, from now on.
void ReadingCost::ReadSheet() {
    m_cost += TagCharacter * m_sheet.size();
    if (MayChangeDisplay(m_sheet)) m_isUnsure = true;
    m_styles.Add(m_sheet);
    std::vector<int> path;
    for (int element = m_current; element != 0; element = At(element).parent)
        path.push_back(element);
    for (auto element = path.rbegin(); element != path.rend(); ++element)
        Weigh(At(*element));
}
