// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/inputcsv.h>

#include <apps/mcserver/suppression/csvline.h>

#include <QtCore/QCoreApplication>

namespace {

const QStringList& CsvColumns() {
    static const QStringList& columns =
        *new QStringList{QStringLiteral("module"), QStringLiteral("input"), QStringLiteral("name"),
                         QStringLiteral("frequency_mhz")};
    return columns;
}

}  // namespace

bool inputcsv::IsHeader(const QString& line) {
    return csvline::Split(line, csvline::FindSeparator(line)) == CsvColumns();
}

QString inputcsv::WrongCount(int cells, int expected) {
    if (cells == 1)
        return QCoreApplication::translate("InputModel", "it has one cell and not %1").arg(expected);
    if (expected == 1)
        return QCoreApplication::translate("InputModel", "it has %1 cells and not one").arg(cells);
    return QCoreApplication::translate("InputModel", "it has %1 cells and not %2").arg(cells).arg(expected);
}

QString inputcsv::InLine(int number, const QString& reason) {
    return QCoreApplication::translate("InputModel", "Line %1: %2").arg(number).arg(reason);
}

QString inputcsv::FrequencyOf(double hz) {
    constexpr int digits = 15;
    return hz != 0.0 ? QString::number(hz / 1e6, 'g', digits) : QString();
}

QString inputcsv::Write(const std::vector<Line>& lines) {
    QString csv = csvline::Join(CsvColumns());
    for (const Line& line : lines)
        csv += csvline::Join({line.module, line.input, line.name, line.frequency});
    return csv;
}

inputcsv::Content inputcsv::Read(const QStringList& lines) {
    Content content;
    const QChar separator = csvline::FindSeparator(lines.value(0));
    if (!IsHeader(lines.value(0)))
        content.problem = QCoreApplication::translate("InputModel", "The first line has to be: %1")
                              .arg(CsvColumns().join(QLatin1Char(',')));
    for (int i = 1; content.problem.isEmpty() && i < lines.size(); ++i) {
        if (lines[i].trimmed().isEmpty()) continue;
        const QStringList cells = csvline::Split(lines[i], separator);
        if (lines[i].count(QLatin1Char('"')) % 2 != 0)
            content.problem =
                InLine(i + 1, QCoreApplication::translate("InputModel", "a quotation mark is not closed"));
        else if (cells.size() == CsvColumns().size())
            content.lines.push_back({i + 1, cells[0].trimmed(), cells[1].trimmed(), cells[2], cells[3]});
        else
            content.problem = InLine(i + 1, WrongCount(cells.size(), CsvColumns().size()));
    }
    if (content.problem.isEmpty() && content.lines.empty())
        content.problem = QCoreApplication::translate("InputModel", "There is nothing below the first line");
    return content;
}
