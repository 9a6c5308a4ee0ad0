// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/log/peertraces.h>

#include <platform/app/trace.h>

#include <tests/support/doubles/manualclock.h>
#include <tests/support/printing.h>

#include <gmock/gmock.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

namespace {

using testing::SizeIs;

class PeerTracesTest : public testing::Test {
  protected:
    /// One more stranger's doing, told in a line like no other.
    void Annoy(const QString& source) {
        const QString name = QStringLiteral("x\n").repeated(40);
        MCS_TRACE_OF(source,
                     QStringLiteral("Session %1 (%2) ends: %3")
                         .arg(QString::number(++m_caused), name, QStringLiteral("why ").repeated(99)));
    }
    /// How many lines were written or counted.
    int CountTold() const {
        static const QRegularExpression count(
            QStringLiteral("(\\d+) lines? left out(?: before|, most of them of |, of )"));
        int told = 0;
        for (const QString& line : m_lines) {
            const QRegularExpressionMatch match = count.match(line);
            if (match.hasMatch()) told += match.captured(1).toInt();
            if (line.startsWith(QLatin1String("Session"))) ++told;
        }
        return told;
    }
    int CountBytes() const { return m_lines.join(QLatin1Char('\n')).toUtf8().size(); }

    ManualClock m_clock;
    QStringList m_lines;
    int m_caused = 0;
    std::optional<PeerTraces> m_traces{std::in_place, m_clock,
                                       [this](const TraceRecord& record) { m_lines << record.message; }};
};

TEST_F(PeerTracesTest, ManyHostsThatCauseManyTracesLeaveTheErrorStreamBelow2KilobytesASecond) {
    constexpr int Seconds = 30;
    for (int i = 0; i < Seconds * 100; ++i) {
        for (int host = 0; host < 25; ++host)
            Annoy(QStringLiteral("10.0.0.%1").arg(host));
        m_clock.Advance(std::chrono::milliseconds(10));
    }
    EXPECT_LT(CountBytes(), Seconds * 2000);
    EXPECT_GT(m_lines.size(), Seconds);
    m_clock.Advance(LogLimiter::TellAfter);
    EXPECT_EQ(CountTold(), m_caused);
}

TEST_F(PeerTracesTest, OneHostLeavesRoomForOthers) {
    for (int i = 0; i < 10'000; ++i)
        Annoy(QStringLiteral("10.0.0.1"));
    m_lines.clear();
    Annoy(QStringLiteral("10.0.0.2"));
    EXPECT_THAT(m_lines, SizeIs(1));
}

TEST_F(PeerTracesTest, WhatIsNobodysDoingOutsideIsWrittenEachTime) {
    for (int i = 0; i < 1000; ++i)
        MCS_TRACE(QStringLiteral("a module is lost"));
    EXPECT_THAT(m_lines, SizeIs(1000));
}

TEST_F(PeerTracesTest, TheEndTellsWhatWasLeftOut) {
    for (int i = 0; i < 100; ++i)
        Annoy(QStringLiteral("10.0.0.1"));
    EXPECT_LT(CountTold(), m_caused);
    m_traces.reset();
    EXPECT_EQ(CountTold(), m_caused);
}

}  // namespace
