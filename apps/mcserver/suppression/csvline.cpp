// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/csvline.h>

namespace {

constexpr QChar Quote(u'"');

bool NeedsQuotes(const QString& cell) {
    for (const QChar character : cell)
        if (character == Quote || character == QLatin1Char(',') || character == QLatin1Char(';') ||
            character.isSpace())
            return true;
    return false;
}

}  // namespace

QString csvline::Join(const QStringList& cells) {
    QStringList shown;
    for (QString cell : cells) {
        if (NeedsQuotes(cell)) cell = Quote + cell.replace(Quote, QStringLiteral("\"\"")) + Quote;
        shown << cell;
    }
    return shown.join(QLatin1Char(',')) + QLatin1Char('\n');
}

QChar csvline::FindSeparator(const QString& line) {
    for (const QChar character : line)
        if (character == QLatin1Char(',') || character == QLatin1Char(';') || character == QLatin1Char('\t'))
            return character;
    return QLatin1Char(',');
}

QStringList csvline::Split(const QString& line, QChar separator) {
    QStringList cells{QString()};
    bool isQuoted = false;
    for (int i = 0; i < line.size(); ++i) {
        const bool isDoubled = isQuoted && line.mid(i, 2) == QStringLiteral("\"\"");
        if (isDoubled) ++i;
        if (line[i] == Quote && !isDoubled)
            isQuoted = !isQuoted;
        else if (line[i] == separator && !isQuoted)
            cells << QString();
        else
            cells.last() += line[i];
    }
    return cells;
}
