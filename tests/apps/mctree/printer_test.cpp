// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/text/printer.h>

#include <gtest/gtest.h>

using namespace mctree;

namespace {

TEST(Printer, WritesInBlocksUntilItIsFlushed) {
    std::vector<QByteArray> blocks;
    Printer printer(
        [&blocks](const QByteArray& bytes) {
            blocks.push_back(bytes);
            return true;
        },
        {});
    printer.WriteLine(QStringLiteral("a"));
    EXPECT_TRUE(blocks.empty());
    printer.Flush();
    printer.Flush();
    ASSERT_EQ(blocks.size(), 1U);
    EXPECT_EQ(blocks[0], QByteArray("a\n"));
    for (int i = 0; i < 70; ++i)
        printer.WriteLine(QString(1023, QLatin1Char('x')));
    ASSERT_EQ(blocks.size(), 2U);
    EXPECT_EQ(blocks[1].size(), 65536);
}

TEST(Printer, WritesNoMoreOnceTheSinkTakesNoMore) {
    int writes = 0;
    Printer printer([&writes](const QByteArray&) { return ++writes < 2; }, {});
    for (int i = 0; i < 5; ++i) {
        printer.WriteLine(QStringLiteral("a"));
        printer.Flush();
    }
    EXPECT_EQ(writes, 2);
    EXPECT_FALSE(printer.IsOpen());
}

TEST(Printer, WritesTheRestWhenItGoes) {
    QByteArray output;
    {
        Printer printer(
            [&output](const QByteArray& bytes) {
                output += bytes;
                return true;
            },
            {});
        printer.WriteLine(QStringLiteral("a"));
    }
    EXPECT_EQ(output, QByteArray("a\n"));
}

}  // namespace
