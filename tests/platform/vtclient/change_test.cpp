// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/vtclient/codecprobe.h>

#include <platform/values/node.h>
#include <platform/values/value.h>
#include <platform/values/valueselection.h>
#include <platform/vtclient/wire/itemkinds.h>

#include <functional>
#include <limits>
#include <ostream>

namespace {

using vt::ChangeWriter;
using vt::EChange;
using vt::EItemKind;
using vt::TreeChange;

QString S(const char* text) {
    return QString::fromUtf8(text);
}

/// Every kind of value, named "v".
struct Values {
    Values() {
        selection.AddItem(S("A"), 0.5, -2);
        selection.AddItem(S("B"), 1.0, 70000);
        list.SetItems({1.0, -2.0});
        for (values::ValueBase* value : std::initializer_list<values::ValueBase*>{
                 &flag, &number, &text, &limited, &real, &selection, &list})
            value->SetName(S("v"));
    }

    values::Value<bool> flag{true};
    values::Value<int> number{-5};
    values::Value<QString> text{S("\u00c4")};
    values::ValueNumeric<int> limited{5, -1, 9};
    values::ValueNumeric<double> real{0.5, -1.5, 2.0};
    values::ValueSelection selection;
    values::ValueList<double> list;
};

/// A change, as it is written of a value, read, and in bytes.
struct Row {
    const char* name;
    std::function<void(ChangeWriter&, Values&)> write;
    std::function<void(TreeChange&)> fill;
    const char* hex;
};

void PrintTo(const Row& row, std::ostream* stream) {
    *stream << row.name;
}

std::function<void(TreeChange&)> Of(EChange change, const std::function<void(TreeChange&)>& fill) {
    return [change, fill](TreeChange& c) {
        c.change = change;
        c.id = 1;
        fill(c);
    };
}

std::function<void(TreeChange&)> Added(
    EItemKind kind, const vt::Content& content,
    const std::function<void(TreeChange&)>& fill = [](TreeChange& /*c*/) {}) {
    return Of(EChange::Added, [=](TreeChange& c) {
        c.parent = 2;
        c.name = S("v");
        c.item.kind = kind;
        c.item.content = content;
        fill(c);
    });
}

std::function<void(TreeChange&)> Content(const vt::Content& content) {
    return Of(EChange::Changed, [content](TreeChange& c) { c.item.content = content; });
}

const std::vector<vt::Choice> Choices = {{S("A"), 0.5, -2}, {S("B"), 1.0, 70000}};

const Row Rows[] = {
    {"AddedNode",
     [](ChangeWriter& w, Values& /*v*/) { w.Added(1, 2, values::Node(S("v")), EItemKind::Node, 0); },
     Added(EItemKind::Node, vt::Content()), "85 00 01 02 61 76 00"},
    {"AddedBoolean", [](ChangeWriter& w, Values& v) { w.Added(1, 2, v.flag, EItemKind::Bool, 0); },
     Added(EItemKind::Bool, true), "87 00 01 02 61 76 01 00 f5"},
    {"AddedInteger", [](ChangeWriter& w, Values& v) { w.Added(1, 2, v.number, EItemKind::Int, 0); },
     Added(EItemKind::Int, qint64{-5}), "87 00 01 02 61 76 02 00 24"},
    {"AddedText", [](ChangeWriter& w, Values& v) { w.Added(1, 2, v.text, EItemKind::Text, 3); },
     Added(EItemKind::Text, S("\u00c4"), [](TreeChange& c) { c.item.flags = 3; }),
     "87 00 01 02 61 76 03 03 62 c384"},
    {"AddedLimitedInteger",
     [](ChangeWriter& w, Values& v) { w.Added(1, 2, v.limited, EItemKind::NumericInt, 0); },
     Added(EItemKind::NumericInt, qint64{5},
           [](TreeChange& c) {
               c.item.minimum = qint64{-1};
               c.item.maximum = qint64{9};
           }),
     "89 00 01 02 61 76 04 00 05 20 09"},
    {"AddedLimitedNumber",
     [](ChangeWriter& w, Values& v) { w.Added(1, 2, v.real, EItemKind::NumericDouble, 0); },
     Added(EItemKind::NumericDouble, 0.5,
           [](TreeChange& c) {
               c.item.minimum = -1.5;
               c.item.maximum = 2.0;
           }),
     "89 00 01 02 61 76 05 00 fb3fe0000000000000 fbbff8000000000000 fb4000000000000000"},
    {"AddedSelectionOfNone",
     [](ChangeWriter& w, Values& v) { w.Added(1, 2, v.selection, EItemKind::Selection, 0); },
     Added(EItemKind::Selection, vt::Content(), [](TreeChange& c) { c.item.choices = Choices; }),
     "88 00 01 02 61 76 06 00 f6 86 61 41 fb3fe0000000000000 21 61 42 fb3ff0000000000000 1a00011170"},
    {"AddedList", [](ChangeWriter& w, Values& v) { w.Added(1, 2, v.list, EItemKind::List, 1); },
     Added(EItemKind::List, QVector<double>{1.0, -2.0}, [](TreeChange& c) { c.item.flags = 1; }),
     "87 00 01 02 61 76 07 01 82 fb3ff0000000000000 fbc000000000000000"},
    {"Removed", [](ChangeWriter& w, Values& /*v*/) { w.Removed(1); },
     Of(EChange::Removed, [](TreeChange& /*c*/) {}), "82 01 01"},
    {"Described", [](ChangeWriter& w, Values& v) { w.Described(1, v.text, EItemKind::Text, 2); },
     Of(EChange::Described,
        [](TreeChange& c) {
            c.name = S("v");
            c.item.flags = 2;
        }),
     "84 02 01 61 76 02"},
    {"DescribedWithLimits",
     [](ChangeWriter& w, Values& v) { w.Described(1, v.limited, EItemKind::NumericInt, 0); },
     Of(EChange::Described,
        [](TreeChange& c) {
            c.name = S("v");
            c.item.minimum = qint64{-1};
            c.item.maximum = qint64{9};
        }),
     "86 02 01 61 76 00 20 09"},
    {"Items",
     [](ChangeWriter& w, Values& v) {
         v.selection.Select(70000);
         w.Items(1, v.selection, EItemKind::Selection);
     },
     Of(EChange::Items,
        [](TreeChange& c) {
            c.item.content = qint64{1};
            c.item.choices = Choices;
        }),
     "84 03 01 01 86 61 41 fb3fe0000000000000 21 61 42 fb3ff0000000000000 1a00011170"},
    {"Own", [](ChangeWriter& w, Values& v) { w.Own(1, 300, v.flag, EItemKind::Bool); },
     Of(EChange::Own,
        [](TreeChange& c) {
            c.session = 300;
            c.item.content = true;
        }),
     "84 04 01 19012c f5"},
    {"ContentBoolean", [](ChangeWriter& w, Values& v) { w.Changed(1, v.flag, EItemKind::Bool); },
     Content(true), "01 f5"},
    {"ContentInteger", [](ChangeWriter& w, Values& v) { w.Changed(1, v.number, EItemKind::Int); },
     Content(qint64{-5}), "01 24"},
    {"ContentText", [](ChangeWriter& w, Values& v) { w.Changed(1, v.text, EItemKind::Text); },
     Content(S("\u00c4")), "01 62 c384"},
    {"ContentLimitedInteger",
     [](ChangeWriter& w, Values& v) { w.Changed(1, v.limited, EItemKind::NumericInt); }, Content(qint64{5}),
     "01 05"},
    {"ContentLimitedNumber",
     [](ChangeWriter& w, Values& v) { w.Changed(1, v.real, EItemKind::NumericDouble); }, Content(0.5),
     "01 fb3fe0000000000000"},
    {"ContentSelection",
     [](ChangeWriter& w, Values& v) {
         v.selection.Select(-2);
         w.Changed(1, v.selection, EItemKind::Selection);
     },
     Content(qint64{0}), "01 00"},
    {"ContentSelectionOfNone",
     [](ChangeWriter& w, Values& v) { w.Changed(1, v.selection, EItemKind::Selection); },
     Content(vt::Content()), "01 f6"},
    {"ContentList", [](ChangeWriter& w, Values& v) { w.Changed(1, v.list, EItemKind::List); },
     Content(QVector<double>{1.0, -2.0}), "01 82 fb3ff0000000000000 fbc000000000000000"},
};

QByteArray Snapshot(const QByteArray& changes) {
    return Bytes("9f 07 01 02") + changes + Bytes("ff");
}

class ChangeTest : public testing::TestWithParam<Row> {
  protected:
    ChangeTest() { GetParam().fill(m_change); }

    Values m_values;
    ChangeWriter m_writer;
    TreeChange m_change;
};

TEST_P(ChangeTest, IsWrittenOfAValueAsDocumented) {
    GetParam().write(m_writer, m_values);
    EXPECT_EQ(m_writer.Take().toHex(' '), Bytes(GetParam().hex).toHex(' '));
}

TEST_P(ChangeTest, IsRead) {
    const DecodedMessage decoded = Decode(Snapshot(Bytes(GetParam().hex)));
    EXPECT_EQ(decoded.error, QString());
    ASSERT_EQ(decoded.changes.size(), 1U);
    ExpectEqual(decoded.changes.front(), m_change);
}

TEST_P(ChangeTest, IsReadAfterAndBeforeOthers) {
    const QByteArray change = Bytes(GetParam().hex);
    const DecodedMessage decoded = Decode(Snapshot(change + Bytes("05 f5 82 01 05") + change));
    EXPECT_EQ(decoded.error, QString());
    ASSERT_EQ(decoded.changes.size(), 4U);
    EXPECT_EQ(decoded.changes[1].id, 5U);
    EXPECT_EQ(decoded.changes[1].item.content, vt::Content(true));
    EXPECT_EQ(decoded.changes[2].change, EChange::Removed);
    EXPECT_EQ(decoded.changes[3].change, m_change.change);
}

TEST_P(ChangeTest, IsReadAsItIsWrittenByItself) {
    m_writer.Write(m_change);
    const DecodedMessage decoded = Decode(Snapshot(m_writer.Take()));
    EXPECT_EQ(decoded.error, QString());
    ASSERT_EQ(decoded.changes.size(), 1U);
    ExpectEqual(decoded.changes.front(), m_change);
}

TEST_P(ChangeTest, IsRefusedWhereverItBreaksOff) {
    const QByteArray whole = Bytes(GetParam().hex);
    for (int size = 1; size < whole.size(); ++size) {
        EXPECT_NE(Decode(Snapshot(whole.left(size))).error, QString()) << size << " bytes, closed";
        EXPECT_NE(Decode(Bytes("9f 07 01 02") + whole.left(size)).error, QString()) << size << " bytes";
    }
}

INSTANTIATE_TEST_SUITE_P(All, ChangeTest, testing::ValuesIn(Rows),
                         [](const auto& row) { return std::string(row.param.name); });

/// Contents that may be written in several ways.
struct FormRow {
    const char* name;
    const char* hex;
    vt::Content content;
};

void PrintTo(const FormRow& row, std::ostream* stream) {
    *stream << row.name;
}

class ContentFormTest : public testing::TestWithParam<FormRow> {};

TEST_P(ContentFormTest, IsRead) {
    const DecodedMessage decoded = Decode(Snapshot(Bytes(GetParam().hex)));
    EXPECT_EQ(decoded.error, QString());
    ASSERT_EQ(decoded.changes.size(), 1U);
    EXPECT_EQ(decoded.changes.front().item.content, GetParam().content);
}

const FormRow FormRows[] = {
    {"Float16", "01 f93e00", 1.5},
    {"Float32", "01 fa3fc00000", 1.5},
    {"Float64", "01 fb3ff8000000000000", 1.5},
    {"Float16Infinity", "01 f97c00", std::numeric_limits<double>::infinity()},
    {"Float16Subnormal", "01 f90001", 0x1p-24},
    {"IntegerLongerThanNeeded", "01 1b0000000000000001", qint64{1}},
    {"NegativeIntegerLongerThanNeeded", "01 3b0000000000000000", qint64{-1}},
    {"ListOfIndefiniteLength", "01 9f f93c00 fac0000000 ff", QVector<double>{1.0, -2.0}},
    {"ListOfIntegers", "01 82 01 21", QVector<double>{1.0, -2.0}},
    {"EmptyListOfIndefiniteLength", "01 9f ff", QVector<double>()},
    {"TextInParts", "01 7f 61 61 62 c384 ff", S("a\u00c4")},
    {"EmptyTextInParts", "01 7f ff", S("")},
    {"IdLongerThanNeeded", "1b0000000000000001 f5", true},
};

INSTANTIATE_TEST_SUITE_P(All, ContentFormTest, testing::ValuesIn(FormRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(ChangeFormTest, ArraysMayHaveIndefiniteLength) {
    // an added selection, all of whose arrays are open
    const DecodedMessage decoded =
        Decode(Snapshot(Bytes("9f 00 01 02 61 76 06 00 00 9f 61 41 fb3fe0000000000000 21 ff ff")));
    EXPECT_EQ(decoded.error, QString());
    ASSERT_EQ(decoded.changes.size(), 1U);
    ASSERT_EQ(decoded.changes.front().item.choices.size(), 1U);
    EXPECT_EQ(decoded.changes.front().item.choices.front().key, -2);
}

TEST(ChangeFormTest, WhatWasWrittenLastCanBeTakenBack) {
    Values values;
    ChangeWriter writer;
    writer.Changed(1, values.flag, EItemKind::Bool);
    const int before = writer.Size();
    writer.Items(2, values.selection, EItemKind::Selection);
    writer.Truncate(before);
    writer.Removed(3);
    EXPECT_EQ(writer.Take().toHex(' '), Bytes("01 f5 82 01 03").toHex(' '));
    EXPECT_EQ(writer.Size(), 0);
}

TEST(ChangeFormTest, AnIntegerIsTakenForANumber) {
    const DecodedMessage decoded = Decode(Snapshot(Bytes("89 00 01 02 61 76 05 00 05 20 09")));
    EXPECT_EQ(decoded.error, QString());
    ASSERT_EQ(decoded.changes.size(), 1U);
    EXPECT_EQ(decoded.changes.front().item.content, vt::Content(5.0));
    EXPECT_EQ(decoded.changes.front().item.minimum, vt::Content(-1.0));
}

}  // namespace
