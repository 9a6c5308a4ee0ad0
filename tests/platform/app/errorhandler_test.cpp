// SPDX-License-Identifier: Apache-2.0
#include <platform/app/errorhandler.h>

#include <tests/support/tracerecorder.h>

#include <gmock/gmock.h>

#include <QtCore/QtGlobal>

#include <array>
#include <memory>

namespace {

using testing::ElementsAre;

const unsigned Fallback = 0x1000;

TEST(ErrorHandlerFlags, AreNumbersDecimalOrHexadecimal) {
    struct Row {
        const char* text;
        unsigned flags;
    };
    const Row table[] = {{"0x22", 0x22},
                         {"0X22", 0x22},
                         {"34", 34},
                         {" 0x60 ", 0x60},
                         {"\t2\n", 2},
                         {"0", 0},
                         {"034", 34},
                         {"0xfF", 0xFF},
                         {"4294967295", ~0U},
                         {"0xFFFFFFFF", ~0U},
                         {"", Fallback},
                         {"  ", Fallback},
                         {"abc", Fallback},
                         {"0x", Fallback},
                         {"0xg", Fallback},
                         {"22h", Fallback},
                         {"-1", Fallback},
                         {"1 2", Fallback},
                         {"1.0", Fallback},
                         {"4294967296", Fallback},
                         {"99999999999", Fallback}};
    for (const Row& row : table)
        EXPECT_EQ(ErrorHandler::ParseFlags(row.text, Fallback), row.flags) << '"' << row.text << '"';
}

TEST(ErrorHandlerFlags, AreTheOnesThatWereSet) {
    const TraceRecorder restoring;
    ErrorHandler& handler = ErrorHandler::Instance();
    const std::array<ErrorHandler::ETraceFlag, 3> all = {
        ErrorHandler::TraceAssertions, ErrorHandler::TraceWarnings, ErrorHandler::TraceDetails};
    for (const unsigned flags : {0U, 0x02U, 0x20U, 0x40U, 0x62U, ~0U}) {
        handler.SetTraceFlags(flags);
        EXPECT_EQ(handler.GetTraceFlags(), flags);
        for (const ErrorHandler::ETraceFlag flag : all)
            EXPECT_EQ(handler.IsTraced(flag), (flags & flag) != 0) << flags << ' ' << flag;
    }
    EXPECT_THAT(all, ElementsAre(0x02U, 0x20U, 0x40U));
}

TEST(ErrorHandlerRecords, OfAnAssertionCarryExpressionAndPlaceAndTime) {
    const TraceRecorder traces;
    const QDateTime before = QDateTime::currentDateTime();
    _Q_assert(L"größe > 0 \U0001F600", L"platform/app/x", 12);
    const QDateTime after = QDateTime::currentDateTime();
    ASSERT_EQ(traces.Records().size(), 1U);
    const TraceRecord& record = traces.Records()[0];
    EXPECT_EQ(record.kind, TraceRecord::Assertion);
    EXPECT_EQ(record.message, QStringLiteral("größe > 0 \U0001F600"));
    EXPECT_EQ(record.file, QStringLiteral("platform/app/x"));
    EXPECT_EQ(record.line, 12);
    EXPECT_LE(before, record.time);
    EXPECT_LE(record.time, after);
    EXPECT_EQ(record.time.timeSpec(), Qt::UTC);
}

TEST(ErrorHandlerRecords, CarryWhoOutsideCausedThemAlsoIfNobodyKnows) {
    const TraceRecorder traces;
    _Q_Trace(QStringLiteral("the disk is full"), L"platform/app/x", 1);
    TraceOf(QStringLiteral("10.0.0.1"), QStringLiteral("nonsense"), L"platform/app/x", 2);
    TraceOf(QString(), QStringLiteral("nonsense"), L"platform/app/x", 3);
    ASSERT_EQ(traces.Records().size(), 3U);
    EXPECT_EQ(traces.Records()[0].source, QString());
    EXPECT_EQ(traces.Records()[1].source, QStringLiteral("10.0.0.1"));
    EXPECT_NE(traces.Records()[2].source, QString());
    EXPECT_EQ(traces.Records()[2].message, QStringLiteral("nonsense"));
    EXPECT_EQ(traces.Records()[2].line, 3);
}

TEST(ErrorHandlerRecords, OfATraceCarryMessageAndPlaceAndTime) {
    const TraceRecorder traces;
    const QDateTime before = QDateTime::currentDateTime();
    _Q_Trace(QStringLiteral("100% of %1 %s"), L"platform/app/y", 0x20);
    ASSERT_EQ(traces.Records().size(), 1U);
    const TraceRecord& record = traces.Records()[0];
    EXPECT_EQ(record.kind, TraceRecord::Trace);
    EXPECT_EQ(record.message, QStringLiteral("100% of %1 %s"));
    EXPECT_EQ(record.file, QStringLiteral("platform/app/y"));
    EXPECT_EQ(record.line, 0x20);
    EXPECT_LE(before, record.time);
    EXPECT_LE(record.time, QDateTime::currentDateTime());
}

TEST(ErrorHandlerRecords, WithoutAPlaceHaveNone) {
    const TraceRecorder traces;
    _Q_Trace(QStringLiteral("nowhere"), nullptr, 0);
    _Q_assert(nullptr, nullptr, 0);
    ASSERT_EQ(traces.Records().size(), 2U);
    EXPECT_TRUE(traces.Records()[0].file.isEmpty());
    EXPECT_TRUE(traces.Records()[1].message.isEmpty());
}

TEST(ErrorHandlerRecords, OfAFormatAreFormattedAndHaveNoPlace) {
    const TraceRecorder traces;
    _Q_TraceOld("%s: %d of %u, %08x, %.2f %c 100%%", "Grüße \U0001F600", -3, 7U, 0xBEEFU, 1.5, 'c');
    _Q_TraceOld("plain");
    EXPECT_THAT(traces.Messages(),
                ElementsAre(QStringLiteral("Grüße \U0001F600: -3 of 7, 0000beef, 1.50 c 100%"),
                            QStringLiteral("plain")));
    EXPECT_EQ(traces.Records()[0].kind, TraceRecord::Trace);
    EXPECT_TRUE(traces.Records()[0].file.isEmpty());
    EXPECT_EQ(traces.Records()[0].line, 0);
    EXPECT_TRUE(traces.Records()[0].time.isValid());
}

TEST(ErrorHandlerRecords, OfLongTextsAreWhole) {
    const TraceRecorder traces;
    const QByteArray text(100000, 'x');
    _Q_TraceOld("<%s>", text.constData());
    EXPECT_THAT(traces.Messages(),
                ElementsAre(QLatin1Char('<') + QString(100000, QLatin1Char('x')) + QLatin1Char('>')));
}

TEST(AssertNotNull, ReportsNullPointersWhileAssertionsAreTraced) {
    const int something = 0;
    const TraceRecorder traces(ErrorHandler::TraceAssertions);
    AssertNotNull(&something, L"there", L"file", 1);
    EXPECT_TRUE(traces.Records().empty());
    AssertNotNull(nullptr, L"pointer", L"file", 2);
    ASSERT_EQ(traces.Records().size(), 1U);
    EXPECT_EQ(traces.Records()[0].kind, TraceRecord::Assertion);
    EXPECT_EQ(traces.Records()[0].message, QStringLiteral("pointer"));
    EXPECT_EQ(traces.Records()[0].file, QStringLiteral("file"));
    EXPECT_EQ(traces.Records()[0].line, 2);
}

TEST(AssertNotNull, ReportsNothingWhileAssertionsAreNotTraced) {
    const TraceRecorder traces(~static_cast<unsigned>(ErrorHandler::TraceAssertions));
    AssertNotNull(nullptr, L"pointer", L"file", 2);
    EXPECT_TRUE(traces.Records().empty());
}

class ErrorHandlerSink : public testing::Test {
  protected:
    ~ErrorHandlerSink() override { m_handler.SetSink(nullptr); }
    static void Trace(const char* text) { _Q_Trace(QString::fromLatin1(text), nullptr, 0); }

    ErrorHandler& m_handler = ErrorHandler::Instance();
    std::vector<QString> m_first;
    std::vector<QString> m_second;
};

TEST_F(ErrorHandlerSink, GetsWhatIsReportedUntilItIsReplaced) {
    m_handler.SetSink([this](const TraceRecord& record) { m_first.push_back(record.message); });
    Trace("a");
    m_handler.SetSink([this](const TraceRecord& record) { m_second.push_back(record.message); });
    Trace("b");
    EXPECT_THAT(m_first, ElementsAre(QStringLiteral("a")));
    EXPECT_THAT(m_second, ElementsAre(QStringLiteral("b")));
}

TEST_F(ErrorHandlerSink, IsCalledAgainForWhatItReportsItself) {
    m_handler.SetSink([this](const TraceRecord& record) {
        m_first.push_back(record.message);
        if (m_first.size() < 3) Trace("nested");
    });
    Trace("outer");
    EXPECT_THAT(m_first,
                ElementsAre(QStringLiteral("outer"), QStringLiteral("nested"), QStringLiteral("nested")));
}

TEST_F(ErrorHandlerSink, MayReplaceItselfAndStaysUntilItReturns) {
    const auto kept = std::make_shared<int>(5);
    const std::weak_ptr<int> watched = kept;
    const auto sink = [this, mine = kept](const TraceRecord& record) {
        m_handler.SetSink([this](const TraceRecord& later) { m_second.push_back(later.message); });
        Trace("while it runs");
        m_first.push_back(record.message + QString::number(*mine));
    };
    m_handler.SetSink(sink);
    EXPECT_EQ(watched.use_count(), 3);  // here, in the sink here, in the one of the handler
    Trace("a");
    EXPECT_EQ(watched.use_count(), 2);
    Trace("b");
    EXPECT_THAT(m_first, ElementsAre(QStringLiteral("a5")));
    EXPECT_THAT(m_second, ElementsAre(QStringLiteral("while it runs"), QStringLiteral("b")));
}

/// What reaches Qt's log while it lives.
class LogRecorder {
  public:
    LogRecorder() : m_before(qInstallMessageHandler(Record)) { s_lines.clear(); }
    ~LogRecorder() { qInstallMessageHandler(m_before); }
    LogRecorder(const LogRecorder&) = delete;
    LogRecorder& operator=(const LogRecorder&) = delete;

    static const std::vector<QString>& Lines() { return s_lines; }

  private:
    static void Record(QtMsgType type, const QMessageLogContext& context, const QString& message) {
        s_lines.push_back(
            QStringLiteral("%1 %2 %3").arg(type).arg(QString::fromLatin1(context.category), message));
    }

    static std::vector<QString> s_lines;
    QtMessageHandler m_before;
};

std::vector<QString> LogRecorder::s_lines;

TEST_F(ErrorHandlerSink, OfTheStartWritesToTheLogAndIsRestored) {
    m_handler.SetSink([this](const TraceRecord& record) { m_first.push_back(record.message); });
    m_handler.SetSink(nullptr);
    const LogRecorder log;
    _Q_assert(L"a > \"b\"", L"platform/app/x", 12);
    _Q_Trace(QStringLiteral("über %1"), L"platform/app/y", 0x20);
    _Q_TraceOld("%d", 7);
    EXPECT_TRUE(m_first.empty());
    EXPECT_THAT(LogRecorder::Lines(),
                ElementsAre(QStringLiteral("2 mcs.assert assertion failed: a > \"b\" (platform/app/x:12)"),
                            QStringLiteral("1 mcs.trace über %1 (platform/app/y:32)"),
                            QStringLiteral("1 mcs.trace 7")));
}

}  // namespace
