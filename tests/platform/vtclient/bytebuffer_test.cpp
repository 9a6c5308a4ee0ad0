// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/wire/bytebuffer.h>
#include <tests/support/allocationcounter.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using vt::ByteBuffer;

std::string Text(const ByteBuffer& buffer) {
    return {buffer.Data(), static_cast<std::size_t>(buffer.Size())};
}

void Append(ByteBuffer& buffer, const std::string& text) {
    buffer.Append(text.data(), static_cast<int>(text.size()));
}

TEST(ByteBufferTest, StartsEmptyAndTakesNoRoom) {
    ByteBuffer buffer;
    EXPECT_TRUE(buffer.IsEmpty());
    EXPECT_EQ(buffer.Size(), 0);
    EXPECT_EQ(buffer.Room(), 0);
    EXPECT_EQ(buffer.Take(), QByteArray());
}

TEST(ByteBufferTest, HoldsWhatWasAppendedHoweverItGrew) {
    ByteBuffer buffer;
    std::string all;
    for (int i = 0; i < 10000; ++i) {
        const std::string text = std::to_string(i);
        Append(buffer, text);
        all += text;
    }
    EXPECT_EQ(Text(buffer), all);
    EXPECT_EQ(buffer.Take(), QByteArray::fromStdString(all));
    EXPECT_TRUE(buffer.IsEmpty());
}

TEST(ByteBufferTest, HoldsWhatWasWrittenIntoReservedRoom) {
    ByteBuffer buffer;
    Append(buffer, "ab");
    char* const room = buffer.Reserve(100);
    room[0] = 'c';
    buffer.Wrote(1);
    EXPECT_EQ(Text(buffer), "abc");
}

TEST(ByteBufferTest, LosesFromTheEndAndFromTheFront) {
    ByteBuffer buffer;
    Append(buffer, "abcdef");
    buffer.Truncate(5);
    EXPECT_EQ(Text(buffer), "abcde");
    buffer.RemoveFront(0);
    buffer.RemoveFront(2);
    EXPECT_EQ(Text(buffer), "cde");
    buffer.RemoveFront(3);
    EXPECT_TRUE(buffer.IsEmpty());
}

TEST(ByteBufferTest, IsUsedAgainWithoutAnAllocation) {
    ByteBuffer buffer;
    Append(buffer, std::string(ByteBuffer::KeptRoom, 'x'));
    buffer.Clear();
    const AllocationCounter counter;
    buffer.Append("short", 5);
    buffer.Clear();
    for (int i = 0; i < ByteBuffer::KeptRoom; ++i)
        buffer.Append("y", 1);
    EXPECT_EQ(AllocationCounter::Count(), 0U);
}

TEST(ByteBufferTest, GivesBackWhatItGrewBeyondWhatItKeeps) {
    const auto clear = [](ByteBuffer& buffer) { buffer.Clear(); };
    const auto take = [](ByteBuffer& buffer) { buffer.Take(); };
    const auto removeAll = [](ByteBuffer& buffer) { buffer.RemoveFront(buffer.Size()); };
    for (void (*empty)(ByteBuffer&) : {+clear, +take, +removeAll}) {
        ByteBuffer buffer;
        Append(buffer, std::string(10 * ByteBuffer::KeptRoom, 'x'));
        EXPECT_GE(buffer.Room(), 10 * ByteBuffer::KeptRoom);
        empty(buffer);
        EXPECT_EQ(buffer.Room(), ByteBuffer::KeptRoom);
        Append(buffer, "works on");
        EXPECT_EQ(Text(buffer), "works on");
    }
}

TEST(ByteBufferTest, KeepsItsRoomWhileSomethingIsLeft) {
    ByteBuffer buffer;
    Append(buffer, std::string(2 * ByteBuffer::KeptRoom, 'x') + "end");
    buffer.RemoveFront(2 * ByteBuffer::KeptRoom);
    EXPECT_EQ(Text(buffer), "end");
    EXPECT_GE(buffer.Room(), 2 * ByteBuffer::KeptRoom);
}

}  // namespace
