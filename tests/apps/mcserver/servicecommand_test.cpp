// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/servicecommand.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

namespace {

QString Text(const char* text) {
    return QString::fromUtf8(text);
}

struct LineRow {
    const char* name;
    QStringList words;
    const char* line;
};

class ServiceCommandLine : public testing::TestWithParam<LineRow> {};

TEST_P(ServiceCommandLine, IsReadAsTheWordsItWasMadeOf) {
    EXPECT_EQ(servicecommand::Line(GetParam().words), Text(GetParam().line));
}

const LineRow LineRows[] = {
    {"PlainWords", {Text("C:\\mcserver.exe"), Text("--service")}, "C:\\mcserver.exe --service"},
    {"ABlankInThePath", {Text("C:\\Program Files\\mcserver.exe")}, "\"C:\\Program Files\\mcserver.exe\""},
    {"AnEmptyWord", {Text("a"), QString()}, "a \"\""},
    {"AQuote", {Text("say \"x\"")}, "\"say \\\"x\\\"\""},
    {"ABackslashBeforeAQuote", {Text("a\\\"b")}, "\"a\\\\\\\"b\""},
    {"ABackslashAtTheEnd", {Text("a b\\")}, "\"a b\\\\\""},
    {"ABackslashAtTheEndOfAPlainWord", {Text("C:\\")}, "C:\\"},
};

INSTANTIATE_TEST_SUITE_P(, ServiceCommandLine, testing::ValuesIn(LineRows),
                         [](const auto& row) { return row.param.name; });

}  // namespace
