// SPDX-License-Identifier: Apache-2.0
#include <apps/common/linewriter.h>

#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace {

using namespace std::chrono_literals;

constexpr auto Patience = 60s;

/// A stream whose reader may stop reading.
struct Stream {
    std::mutex mutex;
    std::condition_variable changed;
    QByteArray read;
    bool isRead = true;
    bool isHeld = false;  ///< a writer waits for the reader

    void Write(const QByteArray& bytes) {
        std::unique_lock<std::mutex> lock(mutex);
        isHeld = !isRead;
        changed.notify_all();
        changed.wait(lock, [this] { return isRead; });
        isHeld = false;
        read += bytes;
        changed.notify_all();
    }
    void SetRead(bool isReadNow) {
        const std::lock_guard<std::mutex> lock(mutex);
        isRead = isReadNow;
        changed.notify_all();
    }
    bool WaitUntilHeld() {
        std::unique_lock<std::mutex> lock(mutex);
        return changed.wait_for(lock, Patience, [this] { return isHeld; });
    }
    QByteArray GetRead() {
        const std::lock_guard<std::mutex> lock(mutex);
        return read;
    }
};

class LineWriterTest : public testing::Test {
  protected:
    /// Until the writer waits for the reader, with nothing else waiting behind it.
    void Stall() {
        stream->SetRead(false);
        writer.Put("held\n");
        ASSERT_TRUE(stream->WaitUntilHeld());
    }

    // The writer's thread may outlive the test, and the stream has to outlive the thread.
    std::shared_ptr<Stream> stream = std::make_shared<Stream>();
    LineWriter writer{[stream = stream](const QByteArray& bytes) { stream->Write(bytes); }};
};

TEST_F(LineWriterTest, WritesLinesInTheirOrder) {
    QByteArray expected;
    for (int i = 0; i < 1000; ++i) {
        const QByteArray line = QByteArray::number(i) + '\n';
        writer.Put(line);
        expected += line;
    }
    ASSERT_TRUE(writer.Drain(Patience));
    EXPECT_EQ(stream->GetRead(), expected);
}

TEST_F(LineWriterTest, GoesOnWhileNobodyReadsAndTellsAfterwardsWhatWasLeftOut) {
    Stall();
    const QByteArray line(LineWriter::MaxWaitingBytes / 4 - 1, 'x');
    for (int i = 0; i < 10; ++i)
        writer.Put(line + '\n');
    EXPECT_FALSE(writer.Drain(0ms));
    stream->SetRead(true);
    ASSERT_TRUE(writer.Drain(Patience));
    EXPECT_EQ(stream->GetRead(),
              "held\n" + (line + '\n').repeated(4) + "(6 left out here, since nobody read them)\n");
    writer.Put("back\n");
    ASSERT_TRUE(writer.Drain(Patience));
    EXPECT_TRUE(stream->GetRead().endsWith("them)\nback\n"));
}

TEST_F(LineWriterTest, CountsALineThatWouldOvertakeThoseLeftOut) {
    Stall();
    writer.Put(QByteArray(LineWriter::MaxWaitingBytes, 'x'));
    writer.Put("too late\n");
    stream->SetRead(true);
    ASSERT_TRUE(writer.Drain(Patience));
    EXPECT_TRUE(stream->GetRead().endsWith("x(1 left out here, since nobody read them)\n"));
}

TEST_F(LineWriterTest, IsUsedByThreadsAtOnce) {
    constexpr int Threads = 8;
    constexpr int Lines = 500;
    std::vector<std::thread> threads;
    for (int i = 0; i < Threads; ++i)
        threads.emplace_back([this] {
            for (int k = 0; k < Lines; ++k)
                writer.Put("line\n");
        });
    for (std::thread& thread : threads)
        thread.join();
    ASSERT_TRUE(writer.Drain(Patience));
    EXPECT_EQ(stream->GetRead(), QByteArray("line\n").repeated(Threads * Lines));
}

TEST(LineWriterEndTest, LeavesAWriteAloneThatDoesNotComeBack) {
    const auto stream = std::make_shared<Stream>();
    {
        LineWriter writer([stream](const QByteArray& bytes) { stream->Write(bytes); });
        stream->SetRead(false);
        writer.Put("held\n");
        ASSERT_TRUE(stream->WaitUntilHeld());
    }
    stream->SetRead(true);  // which comes back after the writer has gone
    std::unique_lock<std::mutex> lock(stream->mutex);
    EXPECT_TRUE(stream->changed.wait_for(lock, Patience, [&stream] { return !stream->read.isEmpty(); }));
}

}  // namespace
