// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/vtclient/loneclient.h>

#include <platform/vtclient/wire/vtlimits.h>

#include <functional>
#include <ostream>

namespace {

using values::Value;
using vt::ChangeWriter;
using vt::EItemKind;
using vt::EMessage;

QString S(const char* text) {
    return QString::fromUtf8(text);
}

/// An integer 1 "n".
void OneNumber(ChangeWriter& writer) {
    Value<int> number(5);
    number.SetName(S("n"));
    writer.Added(1, 0, number, EItemKind::Int, 0);
}

TEST_F(LoneClient, WhatIsWithdrawnForAReasonIsNotEstablishedAnyMore) {
    IVtTic* const tic = AddTic("/L,/S");
    Welcome();
    ShowSubtree(1, OneNumber);
    ASSERT_TRUE(tic->IsEstablished());
    vt::AbsentMessage absent = For<vt::AbsentMessage>(1);
    absent.reason = S("not any more");
    Say(absent);
    EXPECT_FALSE(tic->IsEstablished());
    auto* const number = Find<Value<int>>("/L/n");
    ASSERT_NE(number, nullptr);
    EXPECT_EQ(number->GetState(), values::Stale);
    Said();
    number->SetValue(7);
    Settle();
    EXPECT_EQ(number->GetValue(), 5) << "an edit that cannot be sent is taken back";
    EXPECT_TRUE(Said<vt::WriteMessage>().empty());
}

TEST_F(LoneClient, WhatIsMadeWithoutAConnectionIsNotUnderWay) {
    AddTic("/L,/S");
    Welcome();
    ShowSubtree(1, OneNumber);
    m_wire->isOpen = false;
    Settle();
    m_observer.Clear();
    ASSERT_NE(m_tree.ProvideNode(S("/L/own")), nullptr);
    EXPECT_FALSE(m_client->HasUnansweredWrites());
    Welcome();
    ShowSubtree(1, OneNumber);
    EXPECT_TRUE(m_client->HasUnansweredWrites());
    const auto created = Said<vt::CreateMessage>();
    ASSERT_EQ(created.size(), 1U);
    EXPECT_EQ(created.front().path, S("/S/own"));
    Answer(created.front().req, vt::EResult::Done);
    EXPECT_FALSE(m_client->HasUnansweredWrites());
    EXPECT_EQ(m_observer.Count(connectioncode::WritesAnswered), 1);
}

TEST_F(LoneClient, ASnapshotMayBeginAnewBeforeItsEnd) {
    IVtTic* const tic = AddTic("/L,/S");
    Welcome();
    Say(For<vt::SubscribedMessage>(1));
    ChangeWriter writer;
    writer.Added(0, 0, values::Node(), EItemKind::Node, 0);
    Say(For<vt::SnapshotMessage>(1, 1), writer.Take());
    Said();
    ShowSubtree(1, OneNumber);
    EXPECT_TRUE(Said<vt::UnsubscribeMessage>().empty());
    EXPECT_TRUE(tic->IsEstablished());
    EXPECT_NE(Find<Value<int>>("/L/n"), nullptr);
}

/// A text 1 "log", of which every change counts.
void OneLog(ChangeWriter& writer) {
    Value<QString> text;
    text.SetName(S("log"));
    writer.Added(1, 0, text, EItemKind::Text, vt::ItemDescription::EveryChange);
}

TEST_F(LoneClient, AnAnswerAboutWhatHasGoneIsNoAnswerAboutWhatCameAfterIt) {
    AddTic("/L,/S");
    Welcome();
    ShowSubtree(1, OneLog);
    Find<Value<QString>>("/L/log")->SetValue(S("one"));
    Find<Value<QString>>("/L/log")->SetValue(S("two"));
    Settle();
    const auto writes = Said<vt::WriteMessage>();
    ASSERT_EQ(writes.size(), 2U);
    m_tree.Delete(Item("/L/log"));
    m_tree.ProvideNode(S("/L/own"));
    Settle();
    ASSERT_EQ(Said<vt::CreateMessage>().size(), 1U);
    const TraceRecorder traces;
    for (const vt::WriteMessage& write : writes)
        Answer(write.req, vt::EResult::Gone);
    EXPECT_TRUE(traces.Messages().empty());
    m_tree.ProvideNode(S("/L/own/more"));
    Settle();
    EXPECT_EQ(Said<vt::CreateMessage>().size(), 1U) << "below what was refused nothing would be created";
}

TEST_F(LoneClient, WhatIsCreatedMayBeAnnouncedBeforeTheCreationIsAnswered) {
    AddTic("/L,/S");
    Welcome();
    ShowSubtree(1, [](ChangeWriter& /*writer*/) {});
    auto* const number = new Value<int>(1);
    number->SetName(S("n"));
    ASSERT_TRUE(m_tree.AddValue(S("/L"), number));
    Settle();
    const auto creations = Said<vt::CreateMessage>();
    ASSERT_EQ(creations.size(), 1U);
    ShowChanges(1, 3, OneNumber);
    EXPECT_EQ(number->GetValue(), 5);
    number->SetValue(6);
    Settle();
    EXPECT_TRUE(Said<vt::WriteMessage>().empty()) << "one at a time";
    Answer(creations.front().req, vt::EResult::Done);
    const auto writes = Said<vt::WriteMessage>();
    ASSERT_EQ(writes.size(), 1U);
    EXPECT_EQ(writes.front().content, vt::Content(qint64{6}));
    Answer(writes.front().req, vt::EResult::Denied);
    EXPECT_EQ(number->GetValue(), 5);
}

TEST_F(LoneClient, AContentOfAnotherTypeEndsTheSessionAndIsNotShown) {
    AddTic("/L,/S");
    Welcome();
    ShowSubtree(1, OneNumber);
    auto* const number = Find<Value<int>>("/L/n");
    number->SetValue(6);
    Settle();
    Said();
    ShowChanges(1, 3, [](ChangeWriter& writer) { writer.Changed(1, Value<bool>(true), EItemKind::Bool); });
    const auto byes = Said<vt::ByeMessage>();
    ASSERT_EQ(byes.size(), 1U);
    EXPECT_EQ(byes.front().code, vt::EBye::Malformed);
    EXPECT_EQ(byes.front().reason, S("changes of '/S': a content that is not of the item's kind"));
    EXPECT_EQ(number->GetValue(), 5) << "the edit was not answered";
    EXPECT_EQ(number->GetState(), values::Stale);
}

TEST_F(LoneClient, AtTheRootOfTheTreeWhatWasMirroredVanishes) {
    AddTic("/,/S");
    Welcome();
    ShowSubtree(1, OneNumber);
    ASSERT_NE(Item("/n"), nullptr);
    m_tree.ProvideNode(S("/own"));
    Say(For<vt::AbsentMessage>(1));
    EXPECT_EQ(Item("/n"), nullptr);
    ShowSubtree(1, OneNumber);
    EXPECT_NE(Item("/n"), nullptr);
    EXPECT_TRUE(m_client->AreAllTicsEstablished());
    Settle();
    EXPECT_NE(Item("/own"), nullptr);
}

TEST_F(LoneClient, ATicThatIsRemovedWhenTheConnectionIsLostHidesTheLossFromNone) {
    IVtTic* const first = AddTic("/L,/S");
    IVtTic* const second = AddTic("/M,/S");
    IVtTic* const third = AddTic("/N,/S");
    Welcome();
    for (const quint32 sub : {1U, 2U, 3U})
        ShowSubtree(sub, OneNumber);
    ASSERT_TRUE(m_client->AreAllTicsEstablished());
    m_reaction.React([&](Observable* /*source*/, TChangeCode /*code*/) { m_client->RemoveTic(first); });
    Item("/L/n")->GetObservable()->AddObserver(&m_reaction);
    m_wire->isOpen = false;
    Settle();
    m_reaction.React(nullptr);
    EXPECT_FALSE(second->IsEstablished());
    EXPECT_FALSE(third->IsEstablished());
    for (const char* path : {"/L/n", "/M/n", "/N/n"})
        EXPECT_EQ(Item(path)->GetState(), values::Stale) << path;
}

/// A text 1 "t".
void OneText(ChangeWriter& writer) {
    Value<QString> text(S("short"));
    text.SetName(S("t"));
    writer.Added(1, 0, text, EItemKind::Text, 0);
}

TEST_F(LoneClient, AnEditThatIsTooLargeForAFrameIsTakenBack) {
    AddTic("/L,/S");
    Welcome();
    ShowSubtree(1, OneText);
    Said();
    auto* const text = Find<Value<QString>>("/L/t");
    const TraceRecorder traces;
    text->SetValue(QString(static_cast<int>(vtlimits::MaxFrame), QChar(u'l')));
    Settle();
    EXPECT_TRUE(Said<vt::WriteMessage>().empty());
    EXPECT_TRUE(text->GetValue() == S("short")) << "which has a megabyte less to print";
    EXPECT_EQ(traces.Messages(),
              std::vector<QString>{S("'/S/t' refused: the content is too large to be sent")});
    EXPECT_FALSE(m_client->HasUnansweredWrites());
    EXPECT_EQ(m_observer.Count(connectioncode::WritesAnswered), 1);
}

TEST_F(LoneClient, WhatIsTooLargeForAFrameStaysLocal) {
    AddTic("/L,/S");
    Welcome();
    ShowSubtree(1, [](ChangeWriter& /*writer*/) {});
    Said();
    auto* const text = new Value<QString>(QString(static_cast<int>(vtlimits::MaxFrame), QChar(u'l')));
    text->SetName(S("t"));
    const TraceRecorder traces;
    ASSERT_TRUE(m_tree.AddValue(S("/L"), text));
    Settle();
    EXPECT_TRUE(Said<vt::CreateMessage>().empty());
    EXPECT_EQ(traces.Messages(),
              std::vector<QString>{
                  S("'/S/t' is not created at the server and stays local: it is too large to be sent")});
    EXPECT_FALSE(m_client->HasUnansweredWrites());
}

TEST_F(LoneClient, WhatLiesDeeperThanAPathMayBeLongStaysLocal) {
    AddTic("/L,/S");
    Welcome();
    ShowSubtree(1, [](ChangeWriter& /*writer*/) {});
    Said();
    const QString name(vtlimits::MaxNameLength, QChar(u'n'));
    m_tree.ProvideNode(S("/L/%1/%1/%1/%1").arg(name));
    Settle();
    const auto creations = Said<vt::CreateMessage>();
    EXPECT_EQ(creations.size(), 3U);
    EXPECT_TRUE(Said<vt::ByeMessage>().empty());
}

TEST_F(LoneClient, AnEditThatIsUndoneBeforeItIsSentIsAnswered) {
    AddTic("/L,/S");
    Welcome();
    ShowSubtree(1, OneNumber);
    Find<Value<int>>("/L/n")->SetValue(6);
    ASSERT_TRUE(m_client->HasUnansweredWrites());
    Find<Value<int>>("/L/n")->SetValue(5);
    Settle();
    EXPECT_FALSE(m_client->HasUnansweredWrites());
    EXPECT_EQ(m_observer.Count(connectioncode::WritesAnswered), 1);
}

TEST_F(LoneClient, ATreeThatIsDeeperThanAPathIsLongIsNoTree) {
    AddTic("/L,/S");
    Welcome();
    Say(For<vt::SubscribedMessage>(1));
    ChangeWriter writer;
    writer.Added(0, 0, values::Node(), EItemKind::Node, 0);
    for (quint32 id = 1; id <= vtlimits::MaxPathLength / 2; ++id)
        writer.Added(id, id - 1, values::Node(S("n")), EItemKind::Node, 0);
    Say(For<vt::SnapshotMessage>(1, 1), writer.Take());
    const auto byes = Said<vt::ByeMessage>();
    ASSERT_EQ(byes.size(), 1U);
    EXPECT_EQ(byes.front().reason, S("changes of '/S': id 2048 lies deeper than a path is long"));
}

TEST_F(LoneClient, WhatAnEarlierMirrorLeftBehindMayGoAllAtOnce) {
    IVtTic* tic = AddTic("/L,/S");
    Welcome();
    ShowSubtree(1, [](ChangeWriter& writer) {
        for (quint32 id = 1; id <= 8; ++id) {
            Value<int> number(5);
            number.SetName(QStringLiteral("n%1").arg(id));
            writer.Added(id, 0, number, EItemKind::Int, 0);
        }
    });
    m_client->RemoveTic(tic);
    m_reaction.React([this](Observable* /*source*/, TChangeCode code) {
        if (code != changecode::StateChanged) return;
        for (int id = 2; id <= 7; ++id)
            m_tree.Delete(Item(qPrintable(QStringLiteral("/L/n%1").arg(id))));
    });
    Item("/L/n1")->GetObservable()->AddObserver(&m_reaction);
    tic = AddTic("/L,/S");
    ShowSubtree(2, OneNumber);
    m_reaction.React(nullptr);
    EXPECT_TRUE(tic->IsEstablished());
    ASSERT_EQ(m_tree.FindNode(S("/L"))->CountChildren(), 1);
    EXPECT_NE(Item("/L/n"), nullptr);
}

/// What a change of a value tells, and how the server makes it happen.
struct ToldRow {
    const char* name;
    TChangeCode code;
    std::function<void(ChangeWriter&)> change;
};

void PrintTo(const ToldRow& row, std::ostream* stream) {
    *stream << row.name;
}

class ToldTest : public LoneClient, public testing::WithParamInterface<ToldRow> {
  protected:
    /// A selection 1 "s" and a number 2 "n"; when the change is told of one of them, \a react happens.
    void ShowAndReact(const std::function<void()>& react) {
        m_tic = AddTic("/L,/S");
        Welcome();
        ShowSubtree(1, [](ChangeWriter& writer) {
            values::ValueSelection selection;
            selection.SetName(S("s"));
            selection.AddItem(S("A"), 1.0, 1);
            writer.Added(1, 0, selection, EItemKind::Selection, 0);
            values::ValueNumeric<int> number(5, 0, 9);
            number.SetName(S("n"));
            writer.Added(2, 0, number, EItemKind::NumericInt, 0);
        });
        m_reaction.React([react](Observable* /*source*/, TChangeCode code) {
            if (code == GetParam().code) react();
        });
        for (const char* path : {"/L/s", "/L/n"}) {
            ASSERT_NE(Item(path), nullptr);
            Item(path)->GetObservable()->AddObserver(&m_reaction);
        }
        ShowChanges(1, 3, GetParam().change);
        m_reaction.React(nullptr);  // the tree tells once more when it goes, after this
        EXPECT_GE(m_reaction.Count(GetParam().code), 1);
    }

    IVtTic* m_tic = nullptr;
};

TEST_P(ToldTest, AnObserverMayEndTheMirror) {
    ShowAndReact([this] {
        if (m_tic != nullptr) m_client->RemoveTic(m_tic);
        m_tic = nullptr;
    });
    for (values::TreeItem* item : m_tree.FindNode(S("/L"))->GetTreeItems()) {
        EXPECT_EQ(item->GetState(), values::Stale);
        EXPECT_EQ(item->GetObservable()->CountObservers(), 1) << "the test's own";
    }
}

TEST_P(ToldTest, AnObserverMayDeleteEverything) {
    ShowAndReact([this] { m_tree.Delete(Item("/L")); });
    EXPECT_EQ(Item("/L"), nullptr);
    EXPECT_FALSE(m_tic->IsEstablished());
}

const ToldRow ToldRows[] = {
    {"Content", changecode::ContentChanged,
     [](ChangeWriter& writer) {
         writer.Changed(2, values::ValueNumeric<int>(6, 0, 9), EItemKind::NumericInt);
     }},
    {"Name", changecode::DescriptionChanged,
     [](ChangeWriter& writer) {
         values::ValueNumeric<int> number(5, 0, 9);
         number.SetName(S("m"));
         writer.Described(2, number, EItemKind::NumericInt, 0);
     }},
    {"Limits", changecode::DescriptionChanged,
     [](ChangeWriter& writer) {
         values::ValueNumeric<int> number(5, 1, 8);
         number.SetName(S("n"));
         writer.Described(2, number, EItemKind::NumericInt, 0);
     }},
    {"Delivery", changecode::DescriptionChanged,
     [](ChangeWriter& writer) {
         values::ValueNumeric<int> number(5, 0, 9);
         number.SetName(S("n"));
         writer.Described(2, number, EItemKind::NumericInt, vt::ItemDescription::EveryChange);
     }},
    {"Staleness", changecode::StateChanged,
     [](ChangeWriter& writer) {
         values::ValueNumeric<int> number(5, 0, 9);
         number.SetName(S("n"));
         writer.Described(2, number, EItemKind::NumericInt, vt::ItemDescription::Stale);
     }},
    {"Choices", changecode::ItemAdded,
     [](ChangeWriter& writer) {
         values::ValueSelection selection;
         selection.AddItem(S("A"), 1.0, 1);
         selection.AddItem(S("B"), 1.0, 2);
         selection.Select(2);
         writer.Items(1, selection, EItemKind::Selection);
     }},
};

INSTANTIATE_TEST_SUITE_P(All, ToldTest, testing::ValuesIn(ToldRows),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
