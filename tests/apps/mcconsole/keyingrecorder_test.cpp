// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/suppression/keyingrecorder.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

void PrintTo(const KeyingSpan& span, std::ostream* out) {
    *out << (span.what == EKeying::Keyed ? "keyed " : "unknown ") << span.beginMs << " to " << span.endMs;
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr InputKey Third{0, 3};
constexpr InputKey Fourth{0, 4};

KeyingSpan Keyed(qint64 begin, qint64 end) {
    return {begin, end, EKeying::Keyed};
}
KeyingSpan Unknown(qint64 begin, qint64 end) {
    return {begin, end, EKeying::Unknown};
}

TEST(AKeyingRecorder, KnowsNothingOfAnInputThatItNeverHeardOf) {
    const KeyingRecorder recorder;
    EXPECT_THAT(recorder.GetSpans(Third, 100, 200), ElementsAre(Unknown(100, 200)));
}

TEST(AKeyingRecorder, TellsWhenAnInputWasKeyed) {
    KeyingRecorder recorder;
    recorder.Note(Third, EKeying::Silent, 100);
    recorder.Note(Third, EKeying::Keyed, 120);
    recorder.Note(Third, EKeying::Keyed, 125);
    recorder.Note(Third, EKeying::Silent, 130);
    recorder.Note(Third, EKeying::Keyed, 150);
    EXPECT_THAT(recorder.GetSpans(Third, 100, 200), ElementsAre(Keyed(120, 130), Keyed(150, 200)));
    EXPECT_THAT(recorder.GetSpans(Third, 125, 128), ElementsAre(Keyed(125, 128)));
    EXPECT_THAT(recorder.GetSpans(Third, 130, 150), IsEmpty());
}

TEST(AKeyingRecorder, TellsSilentFromNotSeen) {
    KeyingRecorder recorder;
    recorder.Note(Third, EKeying::Silent, 100);
    recorder.Note(Third, EKeying::Unknown, 140);
    recorder.Note(Third, EKeying::Silent, 150);
    EXPECT_THAT(recorder.GetSpans(Third, 50, 200), ElementsAre(Unknown(50, 100), Unknown(140, 150)));
}

TEST(AKeyingRecorder, TellsAsOneWhatNobodySawBeforeAndAfterItsFirstNote) {
    KeyingRecorder recorder;
    recorder.Note(Third, EKeying::Unknown, 100);
    EXPECT_THAT(recorder.GetSpans(Third, 50, 200), ElementsAre(Unknown(50, 200)));
}

TEST(AKeyingRecorder, KeepsInputsApart) {
    KeyingRecorder recorder;
    recorder.Note(Third, EKeying::Keyed, 100);
    recorder.Note(Fourth, EKeying::Silent, 100);
    EXPECT_THAT(recorder.GetSpans(Third, 100, 200), ElementsAre(Keyed(100, 200)));
    EXPECT_THAT(recorder.GetSpans(Fourth, 100, 200), IsEmpty());
}

TEST(AKeyingRecorder, ForgetsWhatWasBeforeTheDayAndNotWhatHeldThen) {
    KeyingRecorder recorder;
    recorder.Note(Third, EKeying::Keyed, 0);
    recorder.Note(Third, EKeying::Silent, 1000);
    recorder.Note(Third, EKeying::Keyed, 2000);
    recorder.Note(Third, EKeying::Silent, 2000 + KeyingRecorder::DayMs);
    EXPECT_THAT(recorder.GetSpans(Third, 0, 2000 + KeyingRecorder::DayMs),
                ElementsAre(Unknown(0, 2000), Keyed(2000, 2000 + KeyingRecorder::DayMs)));
}

TEST(AKeyingRecorder, StaysSmallHoweverOftenATransmitterKeys) {
    KeyingRecorder recorder;
    constexpr qint64 changes = 10 * KeyingRecorder::MostSpans;
    for (qint64 i = 0; i < changes; ++i)
        recorder.Note(Third, i % 2 == 0 ? EKeying::Keyed : EKeying::Silent, i);
    const std::vector<KeyingSpan> spans = recorder.GetSpans(Third, 0, changes);
    EXPECT_LE(spans.size(), KeyingRecorder::MostSpans / 2 + 1);
    EXPECT_EQ(spans.front(), Unknown(0, changes - qint64{KeyingRecorder::MostSpans}));
}

}  // namespace
