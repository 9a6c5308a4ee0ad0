// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/text/description.h>

#include <tests/apps/mctree/commandfixture.h>

using namespace mctree;

namespace {

QString Line(const values::TreeItem& item) {
    return ToLine(Describe(item, QStringLiteral("/x")));
}

TEST(Description, OfANode) {
    EXPECT_EQ(Line(values::Node()), QStringLiteral(R"({"children":0,"kind":"node","path":"/x"})"));
}

TEST(Description, OfPlainValues) {
    EXPECT_EQ(Line(values::Value<bool>(true)),
              QStringLiteral(R"({"content":true,"kind":"boolean","path":"/x","writable":true})"));
    EXPECT_EQ(Line(values::Value<int>(-3)),
              QStringLiteral(R"({"content":-3,"kind":"integer","path":"/x","writable":true})"));
    EXPECT_EQ(Line(values::Value<QString>(QStringLiteral("a\n\"b\""))),
              QStringLiteral(R"({"content":"a\n\"b\"","kind":"text","path":"/x","writable":true})"));
}

TEST(Description, OfANumberWithUnitAndLimits) {
    values::ValueNumeric<double> frequency(98.5e6, 300000, 3e9);
    frequency.SetName(QStringLiteral("Frequency"));
    EXPECT_EQ(Line(frequency),
              QStringLiteral(R"({"content":98500000,"kind":"number","max":3000000000,"min":300000,)"
                             R"("path":"/x","unit":"Hz","writable":true})"));
}

TEST(Description, ATextHasNoUnitWhateverItsName) {
    values::Value<QString> text;
    text.SetName(QStringLiteral("Frequency"));
    EXPECT_FALSE(Describe(text, QString()).contains(QStringLiteral("unit")));
}

TEST(Description, OfASelection) {
    values::ValueSelection selection;
    selection.AddItem(QStringLiteral("Idle"), 0.5, 7);
    EXPECT_EQ(Line(selection),
              QStringLiteral(R"({"content":null,"items":[{"key":7,"number":0.5,"text":"Idle"}],)"
                             R"("kind":"selection","path":"/x","writable":true})"));
    selection.Select(7);
    const QJsonObject object = Describe(selection, QString());
    EXPECT_EQ(object[QStringLiteral("content")].toString(), QStringLiteral("Idle"));
    EXPECT_EQ(object[QStringLiteral("key")].toInt(), 7);
}

TEST(Description, OfAList) {
    values::ValueList<double> list;
    list.SetItems({1, 2.5});
    EXPECT_EQ(Line(list), QStringLiteral(R"({"content":[1,2.5],"kind":"list","path":"/x","writable":true})"));
}

TEST(Description, TellsWhatIsOutOfTheOrdinary) {
    values::Value<int> value;
    value.SetWritable(false);
    value.SetState(values::Stale);
    value.SetDelivery(values::EDelivery::EveryChange);
    const QJsonObject object = Describe(value, QString());
    EXPECT_FALSE(object[QStringLiteral("writable")].toBool(true));
    EXPECT_TRUE(object[QStringLiteral("stale")].toBool());
    EXPECT_TRUE(object[QStringLiteral("everyChange")].toBool());
}

TEST(Description, IsSafeForATerminal) {
    const values::Value<QString> text(QStringLiteral("\x1b[2J") + QChar(0x9b));
    const QString line = Line(text);
    EXPECT_FALSE(line.contains(QChar(0x1b)));
    EXPECT_FALSE(line.contains(QChar(0x9b)));
    const QJsonObject parsed = QJsonDocument::fromJson(line.toUtf8()).object();
    EXPECT_EQ(parsed[QStringLiteral("content")].toString(), text.GetValue());
}

}  // namespace
