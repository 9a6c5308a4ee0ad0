// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/text/table.h>

#include <algorithm>

namespace mctree {

namespace {

const char* const Gap = "  ";
constexpr int GapColumns = 2;
constexpr int LeastContent = 8;  // columns; where less is left lines may well wrap

struct Widths {
    int name = 0;
    int kind = 0;
    int number = 0;  ///< of contents with a unit
};

Widths Measure(const std::vector<TableRow>& rows) {
    Widths widths;
    for (const TableRow& row : rows) {
        widths.name = std::max(widths.name, CountColumns(row.name));
        widths.kind = std::max(widths.kind, CountColumns(row.kind));
        // A list of numbers may be long, and would push everybody else out to its width.
        if (!row.content.unit.isEmpty() && row.kind != QLatin1String("list"))
            widths.number = std::max(widths.number, CountColumns(row.content.text));
    }
    return widths;
}

QString Spaces(int count) {
    return QString(std::max(count, 0), QLatin1Char(' '));
}

/// \a text, cut to \a columns with a mark at the end if it is longer.
QString Cut(const QString& text, int columns) {
    if (CountColumns(text) <= columns) return text;
    int length = 0;
    int used = 0;
    while (length < text.size()) {
        const int units = text[length].isHighSurrogate() && length + 1 < text.size() ? 2 : 1;
        const int wide = CountColumns(text.mid(length, units));
        if (used + wide > columns - 1) break;
        used += wide;
        length += units;
    }
    return text.left(length) + QChar(0x2026);  // an ellipsis
}

void PrintRow(const TableRow& row, const Widths& widths, Printer& printer) {
    QString content = row.content.text;
    if (!row.content.unit.isEmpty())
        content = Spaces(widths.number - CountColumns(content)) + row.content.Joined();
    QString mark = row.isStale ? QStringLiteral("  (stale)") : QString();
    const int kind = widths.kind > 0 ? widths.kind + GapColumns : 0;
    const int room = printer.Style().width - widths.name - kind - GapColumns - CountColumns(mark);
    if (room >= LeastContent) content = Cut(content, room);
    QString line = printer.Painted(row.name, row.isNode ? EColour::Node : EColour::Plain) +
                   Spaces(widths.name - CountColumns(row.name));
    if (widths.kind > 0) line += QLatin1String(Gap) + printer.Painted(row.kind, EColour::Faint);
    if (!content.isEmpty() || row.isStale)
        line += Spaces(widths.kind - CountColumns(row.kind)) + QLatin1String(Gap) +
                printer.Painted(content, row.isNode ? EColour::Faint : EColour::Plain) +
                printer.Painted(mark, EColour::Warning);
    printer.WriteLine(line);
}

bool IsWide(uint code) {
    // The blocks of East Asian scripts and of pictures, which terminals show over two columns.
    return (code >= 0x1100 && code <= 0x115f) || (code >= 0x2e80 && code <= 0xa4cf) ||
           (code >= 0xac00 && code <= 0xd7a3) || (code >= 0xf900 && code <= 0xfaff) ||
           (code >= 0xfe30 && code <= 0xfe6f) || (code >= 0xff00 && code <= 0xff60) ||
           (code >= 0x1f300 && code <= 0x1faff) || (code >= 0x20000 && code <= 0x3fffd);
}

}  // namespace

int CountColumns(const QString& text) {
    int columns = 0;
    for (int i = 0; i < text.size(); ++i) {
        uint code = text[i].unicode();
        if (text[i].isHighSurrogate() && i + 1 < text.size()) {
            code = QChar::surrogateToUcs4(text[i], text[i + 1]);
            ++i;
        }
        const QChar::Category category = QChar::category(code);
        if (category == QChar::Mark_NonSpacing || category == QChar::Mark_Enclosing) continue;
        columns += IsWide(code) ? 2 : 1;
    }
    return columns;
}

void PrintTable(const std::vector<TableRow>& rows, Printer& printer) {
    const Widths widths = Measure(rows);
    for (const TableRow& row : rows)
        PrintRow(row, widths, printer);
}

}  // namespace mctree
