// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/text/table.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

using namespace mctree;

namespace {

QString Printed(const std::vector<TableRow>& rows, const OutputStyle& style = {}) {
    QByteArray output;
    {
        Printer printer(
            [&output](const QByteArray& bytes) {
                output += bytes;
                return true;
            },
            style);
        PrintTable(rows, printer);
    }
    return QString::fromUtf8(output);
}

TableRow Row(const char* name, const char* kind, const char* content, const char* unit = "") {
    return {QString::fromUtf8(name),
            QString::fromUtf8(kind),
            {QString::fromUtf8(content), QString::fromUtf8(unit)},
            false,
            false};
}

TEST(Table, ColumnsAreAlignedAndNumbersStandWithTheirUnits) {
    EXPECT_EQ(Printed({Row("Frequency", "number", "98.5", "MHz"), Row("SweepTime", "integer", "250", "ms"),
                       Row("Comment", "text", "a long comment"), Row("Empty", "text", "")}),
              QStringLiteral("Frequency  number   98.5 MHz\n"
                             "SweepTime  integer   250 ms\n"
                             "Comment    text     a long comment\n"
                             "Empty      text\n"));
}

TEST(Table, AListDoesNotPushNumbersAside) {
    EXPECT_EQ(Printed({Row("Frequency", "list", "1, 2, 3, 4", "Hz"), Row("SweepTime", "integer", "2", "ms")}),
              QStringLiteral("Frequency  list     1, 2, 3, 4 Hz\n"
                             "SweepTime  integer  2 ms\n"));
}

TEST(Table, StaleIsSaidInWords) {
    TableRow row = Row("a", "integer", "1");
    row.isStale = true;
    EXPECT_EQ(Printed({row}), QStringLiteral("a  integer  1  (stale)\n"));
    row.content.text.clear();
    EXPECT_EQ(Printed({row}), QStringLiteral("a  integer    (stale)\n"));
}

TEST(Table, AContentIsCutToTheWidthOfTheTerminal) {
    OutputStyle style;
    style.width = 20;
    const auto rows = {Row("a", "text", "12345678901234567890")};
    EXPECT_EQ(Printed(rows, style), QString::fromUtf8("a  text  1234567890\xe2\x80\xa6\n"));
    style.width = 10;  // too narrow to be of use
    EXPECT_EQ(Printed(rows, style), QStringLiteral("a  text  12345678901234567890\n"));
}

TEST(Table, WideCharactersCountTwice) {
    EXPECT_EQ(CountColumns(QStringLiteral(u"a\u6f22\u5b57")), 5);
    EXPECT_EQ(CountColumns(QStringLiteral(u"e\u0301")), 1);
    EXPECT_EQ(CountColumns(QStringLiteral(u"\U0001F4E1")), 2);
    OutputStyle style;
    style.width = 17;
    EXPECT_EQ(
        Printed({Row("a", "text", "\xe6\xbc\xa2\xe6\xbc\xa2\xe6\xbc\xa2\xe6\xbc\xa2\xe6\xbc\xa2")}, style),
        QString::fromUtf8("a  text  \xe6\xbc\xa2\xe6\xbc\xa2\xe6\xbc\xa2\xe2\x80\xa6\n"));
}

TEST(Table, ColoursAreForTerminalsOnly) {
    TableRow row = Row("a/", "node", "2 items");
    row.isNode = true;
    EXPECT_FALSE(Printed({row}).contains(QLatin1Char('\033')));
    OutputStyle style;
    style.hasColour = true;
    EXPECT_EQ(Printed({row}, style),
              QStringLiteral("\033[1;34ma/\033[0m  \033[2mnode\033[0m  \033[2m2 items\033[0m\n"));
}

}  // namespace
