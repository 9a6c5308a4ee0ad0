// SPDX-License-Identifier: Apache-2.0
// What the project traces itself names the place where it stands, the same one on every machine.
#include <platform/app/trace.h>

#include <tests/support/printing.h>
#include <tests/support/tracerecorder.h>

#include <gtest/gtest.h>

namespace {

TEST(ATrace, NamesItsPlaceBelowTheRootAndItsLine) {
    const TraceRecorder traces(ErrorHandler::TraceWarnings);
    MCS_TRACE(QStringLiteral("%1 times").arg(3));
    const int line = __LINE__ - 1;
    ASSERT_EQ(traces.Records().size(), 1U);
    EXPECT_EQ(traces.Records()[0].kind, TraceRecord::Trace);
    EXPECT_EQ(traces.Records()[0].message, QStringLiteral("3 times"));
    EXPECT_EQ(traces.Records()[0].file, QStringLiteral("tests/platform/app/trace_test"));
    EXPECT_EQ(traces.Records()[0].line, line);
}

TEST(ATrace, ThatNobodyWantsIsNotBuilt) {
    const TraceRecorder traces(~static_cast<unsigned>(ErrorHandler::TraceWarnings));
    bool isBuilt = false;
    MCS_TRACE((isBuilt = true, QStringLiteral("never")));
    EXPECT_FALSE(isBuilt);
    EXPECT_TRUE(traces.Records().empty());
}

TEST(AnAssertion, NamesItsConditionAndPlace) {
    const TraceRecorder traces(ErrorHandler::TraceAssertions);
    MCS_ASSERT(1 + 1 == 2);
    EXPECT_TRUE(traces.Records().empty());
    MCS_ASSERT(1 + 1 == 3);
    const int line = __LINE__ - 1;
    ASSERT_EQ(traces.Records().size(), 1U);
    EXPECT_EQ(traces.Records()[0].kind, TraceRecord::Assertion);
    EXPECT_EQ(traces.Records()[0].message, QStringLiteral("1 + 1 == 3"));
    EXPECT_EQ(traces.Records()[0].file, QStringLiteral("tests/platform/app/trace_test"));
    EXPECT_EQ(traces.Records()[0].line, line);
}

TEST(ATrace, OfASourceElsewhereNamesItAsTheCompilerDoes) {
    constexpr trace::Place place(L"C:\\elsewhere\\folder.d\\source.cpp");
    EXPECT_EQ(QString::fromWCharArray(place.Path()), QStringLiteral("C:/elsewhere/folder.d/source"));
}

TEST(ATrace, OfAFileWithoutAnExtensionNamesAllOfIt) {
    constexpr trace::Place place(L"folder.d/source");
    EXPECT_EQ(QString::fromWCharArray(place.Path()), QStringLiteral("folder.d/source"));
}

}  // namespace
