// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/pastedcells.h>

#include <apps/mcserver/suppression/csvline.h>
#include <apps/mcserver/suppression/inputcsv.h>

#include <algorithm>

namespace {

constexpr QChar Tab(u'\t');

bool HasTabs(const QStringList& lines) {
    return std::any_of(lines.begin(), lines.end(), [](const QString& line) { return line.contains(Tab); });
}

/// What is between the cells. A comma may also be the decimal point, a semicolon nothing else.
QChar SeparatorOf(const QStringList& lines) {
    for (const QChar separator : {u';', u','})
        for (const QString& line : lines)
            if (csvline::Split(line, separator).size() > 1) return separator;
    return QChar();
}

pastedcells::Content OneCellALine(const QStringList& lines) {
    pastedcells::Content content;
    for (const QString& line : lines)
        content.lines.push_back({line});
    return content;
}

pastedcells::Content SplitAtTabs(const QStringList& lines) {
    pastedcells::Content content;
    for (const QString& line : lines)
        content.lines.push_back(line.split(Tab));
    return content;
}

}  // namespace

QStringList pastedcells::LinesOf(const QString& text) {
    QString lines = text;
    lines.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    if (lines.endsWith(QLatin1Char('\n'))) lines.chop(1);
    return lines.split(QLatin1Char('\n'));
}

pastedcells::Content pastedcells::ReadColumn(const QStringList& lines) {
    return HasTabs(lines) ? SplitAtTabs(lines) : OneCellALine(lines);
}

pastedcells::Content pastedcells::Read(const QStringList& lines) {
    const QChar separator = SeparatorOf(lines);
    if (HasTabs(lines) || separator.isNull()) return ReadColumn(lines);
    Content content;
    for (const QString& line : lines) {
        const QStringList cells = csvline::Split(line, separator);
        const int expected = content.lines.empty() ? cells.size() : content.lines.front().size();
        if (cells.size() != expected) {
            const int number = static_cast<int>(content.lines.size()) + 1;
            content.problem = inputcsv::InLine(number, inputcsv::WrongCount(cells.size(), expected));
            break;
        }
        content.lines.push_back(cells);
    }
    return content;
}
