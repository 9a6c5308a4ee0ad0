// SPDX-License-Identifier: Apache-2.0
#include <platform/app/errorhandler.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

namespace {

constexpr int Threads = 4;
constexpr int Reports = 1000;

class ErrorHandlerThreads : public testing::Test {
  protected:
    ~ErrorHandlerThreads() override {
        m_handler.SetSink(nullptr);
        m_handler.SetTraceFlags(m_flagsBefore);
    }
    /// Each thread reports its number as the line.
    static void ReportFromAllThreads() {
        std::vector<std::thread> threads;
        for (int number = 0; number < Threads; ++number)
            threads.emplace_back([number] {
                for (int i = 0; i < Reports; ++i)
                    _Q_Trace(QString::number(i), L"thread", number);
            });
        for (std::thread& thread : threads)
            thread.join();
    }

    ErrorHandler& m_handler = ErrorHandler::Instance();
    unsigned m_flagsBefore = m_handler.GetTraceFlags();
};

TEST_F(ErrorHandlerThreads, LoseNothingAndKeepTheirOrder) {
    std::mutex mutex;
    std::map<int, std::vector<QString>> messages;
    m_handler.SetSink([&](const TraceRecord& record) {
        const std::lock_guard<std::mutex> lock(mutex);
        messages[record.line].push_back(record.message);
    });
    ReportFromAllThreads();
    ASSERT_EQ(messages.size(), static_cast<std::size_t>(Threads));
    for (const auto& [number, ofThread] : messages) {
        ASSERT_EQ(ofThread.size(), static_cast<std::size_t>(Reports)) << number;
        for (int i = 0; i < Reports; ++i)
            EXPECT_EQ(ofThread[static_cast<std::size_t>(i)], QString::number(i)) << number;
    }
}

TEST_F(ErrorHandlerThreads, EachReportReachesOneSinkWhileSinksAreReplaced) {
    std::atomic<int> counts[2] = {{0}, {0}};
    std::atomic<bool> isOver{false};
    const auto sink = [&counts](int number) {
        return [&counts, number](const TraceRecord&) { ++counts[number]; };
    };
    m_handler.SetSink(sink(0));
    std::thread replacing([&] {
        for (int number = 1; !isOver; number = 1 - number) {
            m_handler.SetSink(sink(number));
            m_handler.SetTraceFlags(m_handler.GetTraceFlags());
        }
    });
    ReportFromAllThreads();
    isOver = true;
    replacing.join();
    EXPECT_EQ(counts[0] + counts[1], Threads * Reports);
}

TEST_F(ErrorHandlerThreads, SinksRunOnTheThreadThatReports) {
    std::thread::id reportedOn;
    m_handler.SetSink([&](const TraceRecord&) { reportedOn = std::this_thread::get_id(); });
    std::thread::id reportedFrom;
    std::thread([&] {
        reportedFrom = std::this_thread::get_id();
        _Q_Trace(QStringLiteral("here"), L"thread", 0);
    }).join();
    EXPECT_EQ(reportedOn, reportedFrom);
}

}  // namespace
