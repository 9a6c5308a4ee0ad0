// SPDX-License-Identifier: Apache-2.0
#include <apps/common/event.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

QString S(const char* text) {
    return QString::fromUtf8(text);
}

Event Tuned() {
    Event event;
    event.number = 7;
    event.time = QDateTime(QDate(2026, 11, 22), QTime(14, 3, 21, 250), Qt::UTC);
    event.severity = EEventSeverity::Notice;
    event.source = S("MpxORV A");
    event.who = S("mcconsole on tower1 (10.0.0.5:50000)");
    event.said = {ECode::Tuned, {S("121.5 MHz"), S("A")}};
    event.text = event.said.ToEnglish();
    return event;
}

TEST(EventTest, IsToldAsJson) {
    EXPECT_EQ(Tuned().ToJson(),
              S(R"x({"args":["121.5 MHz","A"],"code":"tuned","n":7,"severity":"notice","source":"MpxORV A",)x"
                R"x("text":"A is tuned to 121.5 MHz","time":"2026-11-22T14:03:21.250Z",)x"
                R"x("who":"mcconsole on tower1 (10.0.0.5:50000)"})x"));
}

TEST(EventTest, IsReadAsItWasTold) {
    const Event told = Tuned();
    const std::optional<Event> read = Event::FromJson(told.ToJson());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->number, told.number);
    EXPECT_EQ(read->time, told.time);
    EXPECT_EQ(read->severity, told.severity);
    EXPECT_EQ(read->source, told.source);
    EXPECT_EQ(read->who, told.who);
    EXPECT_EQ(read->code, S("tuned"));
    EXPECT_EQ(read->text, told.text);
    EXPECT_EQ(read->said, told.said);
    EXPECT_EQ(read->ToJson(), told.ToJson());
}

TEST(EventTest, ShowsTheEnglishLineWhereTheCodeIsNotKnownHere) {
    const std::optional<Event> read = Event::FromJson(
        S(R"({"n":1,"time":"2026-11-22T14:03:21.250Z","code":"of-tomorrow","args":[],"text":"later"})"));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->code, S("of-tomorrow"));
    EXPECT_EQ(read->Translated(), S("later"));
    EXPECT_EQ(read->severity, EEventSeverity::Info);
}

struct NoEvent {
    const char* name;
    const char* json;
};

class NoEventTest : public testing::TestWithParam<NoEvent> {};

TEST_P(NoEventTest, IsNotTaken) {
    EXPECT_FALSE(Event::FromJson(S(GetParam().json)));
}

INSTANTIATE_TEST_SUITE_P(
    All, NoEventTest,
    testing::Values(NoEvent{"Nothing", ""}, NoEvent{"NoJson", "hello"}, NoEvent{"AList", "[1]"},
                    NoEvent{"AnEmptyObject", "{}"},
                    NoEvent{"NoNumber", R"({"time":"2026-11-22T14:03:21.250Z","text":"a"})"},
                    NoEvent{"NumberZero", R"({"n":0,"time":"2026-11-22T14:03:21.250Z","text":"a"})"},
                    NoEvent{"ANegativeNumber", R"({"n":-1,"time":"2026-11-22T14:03:21.250Z","text":"a"})"},
                    NoEvent{"AHugeNumber", R"({"n":1e300,"time":"2026-11-22T14:03:21.250Z","text":"a"})"},
                    NoEvent{"ANumberThatIsAText",
                            R"({"n":"1","time":"2026-11-22T14:03:21.250Z","text":"a"})"},
                    NoEvent{"NoTime", R"({"n":1,"text":"a"})"},
                    NoEvent{"AWrongTime", R"({"n":1,"time":"noon","text":"a"})"},
                    NoEvent{"NoText", R"({"n":1,"time":"2026-11-22T14:03:21.250Z"})"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(EventTest, TakesNoTextThatIsTooLong) {
    Event event = Tuned();
    event.text = QString(Event::MaxLength, QLatin1Char('x'));
    EXPECT_FALSE(Event::FromJson(event.ToJson()));
}

TEST(CodedTextTest, ShowsArgumentsAsTheyAre) {
    EXPECT_EQ(CodedText(ECode::MasterSince, {S("a %2 b"), S("%1")}).ToEnglish(),
              S("a %2 b is master since %1"));
}

TEST(CodedTextTest, HoldsOthersAsArguments) {
    const CodedText text(ECode::Refused, {CodedText(ECode::NeedsPolicy, {S("MayCal"), CodedText()})});
    EXPECT_EQ(text.ToEnglish(), S("refused: needs MayCal"));
    EXPECT_EQ(text.ToJsonText(),
              S(R"({"args":[{"args":["MayCal",""],"code":"needs-policy"}],"code":"refused"})"));
    EXPECT_EQ(CodedText::FromJsonText(text.ToJsonText()), text);
}

TEST(CodedTextTest, SaysNothingOrAMereTextAsAnObjectToo) {
    EXPECT_EQ(CodedText().ToJsonText(), S("{}"));
    EXPECT_EQ(CodedText(S("as it is")).ToJsonText(), S(R"({"text":"as it is"})"));
    EXPECT_EQ(CodedText::FromJsonText(S(R"({"text":"as it is"})")), CodedText(S("as it is")));
    EXPECT_EQ(CodedText::FromJsonText(S("{}")), CodedText());
}

TEST(CodedTextTest, TakesWhatIsNestedTooDeeplyForNothing) {
    CodedText text(S("a"));
    for (int i = 0; i < CodedText::MaxDepth; ++i)
        text = CodedText(ECode::Done, {text});
    EXPECT_EQ(CodedText::FromJsonText(text.ToJsonText()), text);
    for (int i = 0; i < 2; ++i)
        text = CodedText(ECode::Done, {text});
    EXPECT_FALSE(CodedText::FromJsonText(text.ToJsonText()));
}

TEST(CodedTextTest, TakesTooManyArgumentsForNothing) {
    EXPECT_TRUE(CodedText::FromJsonText(S(R"({"code":"done","args":["","","","","","","","",""]})")));
    EXPECT_FALSE(CodedText::FromJsonText(S(R"({"code":"done","args":["","","","","","","","","",""]})")));
    EXPECT_FALSE(CodedText::FromJsonText(S(R"({"code":"done","args":[1]})")));
    EXPECT_FALSE(CodedText::FromJsonText(S(R"({"code":"no such code","args":[]})")));
    EXPECT_FALSE(CodedText::FromJsonText(S("no JSON")));
}

TEST(EventCodesTest, EachCodeIsFoundByItsWordAndThereIsOnlyOneOfIt) {
    std::set<std::string> words;
    for (int i = 0; i < static_cast<int>(ECode::Count); ++i) {
        const eventcodes::Row& row = eventcodes::Of(static_cast<ECode>(i));
        ASSERT_NE(row.code, nullptr) << i;
        ASSERT_NE(row.english, nullptr) << row.code;
        EXPECT_TRUE(words.insert(row.code).second) << row.code;
        EXPECT_EQ(eventcodes::Find(QLatin1String(row.code)), static_cast<ECode>(i));
    }
    EXPECT_EQ(eventcodes::Find(QString()), ECode::Count);
}

}  // namespace
