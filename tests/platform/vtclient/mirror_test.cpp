// SPDX-License-Identifier: Apache-2.0
// What a mirror makes of changes that come in an awkward order.
#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/values/valueselection.h>
#include <platform/vtclient/client/treemirror.h>
#include <tests/support/printing.h>
#include <tests/support/tracerecorder.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace {

using values::Value;
using values::ValueNumeric;
using Text = Value<QString>;

QString S(const char* text) {
    return QString::fromUtf8(text);
}

class Mirror : public testing::Test, private vt::TreeMirror::IHost {
  protected:
    void Start() { m_mirror.Start({S("/")}, 1); }
    void Add(quint32 id, const char* name, const vt::ItemDescription& item) {
        vt::TreeChange change;
        change.change = vt::EChange::Added;
        change.id = id;
        change.name = S(name);
        change.item = item;
        Apply(change);
    }
    void Change(quint32 id, const vt::Content& content) {
        vt::TreeChange change;
        change.change = vt::EChange::Changed;
        change.id = id;
        change.item.content = content;
        Apply(change);
    }
    void Apply(const vt::TreeChange& change) {
        QString error;
        EXPECT_TRUE(m_mirror.Apply(change, &error)) << error.toStdString();
    }
    void Finish() {
        QString error;
        EXPECT_TRUE(m_mirror.Finish(&error)) << error.toStdString();
    }
    static vt::ItemDescription Number(int content, int minimum, int maximum) {
        vt::ItemDescription item;
        item.kind = vt::EItemKind::NumericInt;
        item.content = qint64{content};
        item.minimum = qint64{minimum};
        item.maximum = qint64{maximum};
        return item;
    }
    static vt::ItemDescription Choices(const vt::Content& current, const std::vector<qint64>& keys) {
        vt::ItemDescription item;
        item.kind = vt::EItemKind::Selection;
        item.content = current;
        for (const qint64 key : keys)
            item.choices.push_back({QString::number(key), 0.0, key});
        return item;
    }
    void ChangeItems(quint32 id, const vt::ItemDescription& item) {
        vt::TreeChange change;
        change.change = vt::EChange::Items;
        change.id = id;
        change.item = item;
        Apply(change);
    }
    void Answer(vt::EResult result) { Answer(m_writes.size(), result); }
    void Answer(std::size_t request, vt::EResult result) {
        vt::AnswerMessage answer;
        answer.req = static_cast<quint32>(request);
        answer.result = result;
        m_mirror.OnAnswer(answer);
    }
    static vt::ItemDescription Note(const char* content) {
        vt::ItemDescription item;
        item.kind = vt::EItemKind::Text;
        item.flags = vt::ItemDescription::EveryChange;
        item.content = S(content);
        return item;
    }
    template <class V>
    V* Find(const char* path) {
        return dynamic_cast<V*>(m_tree.FindItem(S(path)));
    }

    void OnEdits(vt::TreeMirror& /*mirror*/) override {}
    quint32 SendWrite(vt::TreeMirror& /*mirror*/, vt::WriteMessage* write) override {
        m_writes.push_back(write->content);
        return static_cast<quint32>(m_writes.size());
    }
    quint32 SendCreation(vt::TreeMirror& /*mirror*/, vt::CreateMessage* create,
                         const values::TreeItem& /*item*/) override {
        m_writes.push_back(create->item.content);
        return static_cast<quint32>(m_writes.size());
    }
    void OnRootDeleted(vt::TreeMirror& /*mirror*/) override {}

    values::Tree m_tree;
    TraceRecorder m_traces;
    std::vector<vt::Content> m_writes;
    vt::TreeMirror m_mirror{S("/L"), S("/S"), *this};
};

TEST_F(Mirror, AContentThatComesBeforeTheLimitsThatAllowItHoldsInTheEnd) {
    Start();
    Add(0, "S", vt::ItemDescription());
    Add(1, "n", Number(50, 0, 100));
    Finish();
    Change(1, qint64{150});
    vt::TreeChange limits;
    limits.change = vt::EChange::Described;
    limits.id = 1;
    limits.name = S("n");
    limits.item = Number(0, 0, 200);
    Apply(limits);
    EXPECT_EQ(Find<ValueNumeric<int>>("/L/n")->GetValue(), 150);
}

TEST_F(Mirror, WhatIsEditedBeforeTheNewSnapshotHasComeToItIsRefused) {
    Start();
    Add(0, "S", vt::ItemDescription());
    Add(1, "note", Note("theirs"));
    Finish();
    m_mirror.Lose();
    Start();
    auto* const note = Find<Text>("/L/note");
    m_traces.Clear();
    note->SetValue(S("mine"));
    EXPECT_EQ(note->GetValue(), S("theirs"));
    ASSERT_EQ(m_traces.Messages().size(), 1U);
    EXPECT_TRUE(m_traces.Messages().front().contains(S("the server's content has not arrived yet")));
    Add(0, "S", vt::ItemDescription());
    Add(1, "note", Note("theirs again"));
    note->SetValue(S("mine again"));
    Finish();
    m_mirror.SendEdits();
    EXPECT_EQ(note->GetValue(), S("mine again"));
    EXPECT_EQ(m_writes, (std::vector<vt::Content>{S("mine again")}));
}

/// A selection of the items 10, 20 and 30, none of them current, in a mirror that is established.
class MirroredSelection : public Mirror {
  protected:
    MirroredSelection() {
        Start();
        Add(0, "S", vt::ItemDescription());
        Add(1, "s", Choices({}, {10, 20, 30}));
        Finish();
        m_selection = Find<values::ValueSelection>("/L/s");
    }

    values::ValueSelection* m_selection = nullptr;
};

TEST_F(MirroredSelection, KnowsWhereTheItemThatWasWrittenStandsByNow) {
    m_selection->Select(20);
    m_mirror.SendEdits();
    ChangeItems(1, Choices({}, {20, 30}));
    Answer(vt::EResult::Done);
    EXPECT_EQ(m_selection->GetCurrentKey(), 20);
    m_selection->Select(30);  // which now stands where 20 stood when it was written
    m_mirror.SendEdits();
    EXPECT_EQ(m_writes, (std::vector<vt::Content>{qint64{20}, qint64{30}}));
}

TEST_F(MirroredSelection, ShowsTheFirstOfTwoItemsWithOneKeyAsTheServerDoes) {
    ChangeItems(1, Choices({}, {10, 20, 20}));
    m_selection->SelectIndex(2);
    m_mirror.SendEdits();
    Answer(vt::EResult::Done);
    EXPECT_EQ(m_selection->GetCurrentIndex(), 1);
}

TEST_F(MirroredSelection, KeepsWhatWasSelectedHereWhenTheItemsChangeBeforeItIsSent) {
    m_selection->Select(20);
    ChangeItems(1, Choices(qint64{0}, {10, 20, 30, 40}));
    EXPECT_EQ(m_selection->GetCurrentKey(), 20);
    m_mirror.SendEdits();
    EXPECT_EQ(m_writes, (std::vector<vt::Content>{qint64{20}}));
}

TEST_F(MirroredSelection, GivesUpWhatWasSelectedHereIfThatItemGoesBeforeItIsSent) {
    m_selection->Select(20);
    ChangeItems(1, Choices(qint64{0}, {10, 30}));
    EXPECT_EQ(m_selection->GetCurrentKey(), 10);
    m_mirror.SendEdits();
    EXPECT_EQ(m_writes, std::vector<vt::Content>());
}

/// Notes, each change of which counts, and numbers, edited and deleted while others wait to be sent or for an
/// answer.
class MirrorWithManyEdits : public Mirror {
  protected:
    static constexpr std::size_t Pairs = 8;

    struct Pair {
        quint32 id = 0;  ///< of the note; the number's is the next
        Text* note = nullptr;
        ValueNumeric<int>* number = nullptr;
    };

    MirrorWithManyEdits() {
        Start();
        Add(0, "S", vt::ItemDescription());
        Finish();
        for (Pair& pair : m_pairs)
            Renew(pair);
    }
    /// In place of both that were there.
    void Renew(Pair& pair) {
        m_waiting.erase(std::remove_if(m_waiting.begin(), m_waiting.end(),
                                       [&](const auto& edit) { return edit.first == pair.id; }),
                        m_waiting.end());
        m_tree.Delete(pair.note);
        m_tree.Delete(pair.number);
        pair.id = m_nextId;
        m_nextId += 2;
        const std::string note = "note" + std::to_string(pair.id);
        const std::string number = "number" + std::to_string(pair.id);
        Add(pair.id, note.c_str(), Note(""));
        Add(pair.id + 1, number.c_str(), Number(0, 0, 1000000));
        QString error;
        EXPECT_TRUE(m_mirror.EndPart(false, &error)) << error.toStdString();
        pair.note = Find<Text>(("/L/" + note).c_str());
        pair.number = Find<ValueNumeric<int>>(("/L/" + number).c_str());
    }
    void Edit(Pair& pair) {
        const QString text = QString::number(++m_edits);
        pair.note->SetValue(text);
        m_waiting.emplace_back(pair.id, text);
        pair.number->SetValue(m_edits);
    }
    void Send() {
        for (const auto& edit : m_waiting)
            m_expected.push_back(edit.second);
        m_waiting.clear();
        m_mirror.SendEdits();
    }
    /// Answers some request that has no answer; \a isInOrder: the first.
    void AnswerOne(bool isInOrder) {
        m_isAnswered.resize(m_writes.size());
        std::vector<std::size_t> open;
        for (std::size_t i = 0; i < m_isAnswered.size(); ++i)
            if (!m_isAnswered[i]) open.push_back(i);
        if (open.empty()) return;
        const std::size_t chosen = open[isInOrder ? 0 : m_random() % open.size()];
        m_isAnswered[chosen] = true;
        Answer(chosen + 1, vt::EResult::Done);
    }
    std::vector<QString> NotesWritten() const {
        std::vector<QString> notes;
        for (const vt::Content& write : m_writes)
            if (const auto* const note = std::get_if<QString>(&write)) notes.push_back(*note);
        return notes;
    }

    std::mt19937 m_random{4};
    std::array<Pair, Pairs> m_pairs;
    std::vector<std::pair<quint32, QString>> m_waiting;
    std::vector<QString> m_expected;
    std::vector<bool> m_isAnswered;
    int m_edits = 0;
    quint32 m_nextId = 1;
};

TEST_F(MirrorWithManyEdits, EveryEditOfWhatIsStillThereIsSentOnceInOrder) {
    for (int step = 0; step < 5000; ++step) {
        Pair& pair = m_pairs[m_random() % Pairs];
        const unsigned what = m_random() % 100;
        if (what < 50)
            Edit(pair);
        else if (what < 65)
            Renew(pair);
        else if (what < 75)
            Send();
        else
            AnswerOne(what < 90);
    }
    Send();
    EXPECT_EQ(NotesWritten(), m_expected);
    // When all is answered, whatever the server says is shown again.
    while (std::count(m_isAnswered.begin(), m_isAnswered.end(), true) < static_cast<long>(m_writes.size())) {
        AnswerOne(false);
        m_mirror.SendEdits();
    }
    for (const Pair& pair : m_pairs) {
        Change(pair.id + 1, qint64{7});
        EXPECT_EQ(pair.number->GetValue(), 7);
    }
}

TEST_F(MirrorWithManyEdits, WhatWasEditedAndDeletedIsNotTakenBack) {
    for (Pair& pair : m_pairs)
        Edit(pair);
    Send();
    for (Pair& pair : m_pairs)
        Edit(pair);
    for (std::size_t i = 0; i < Pairs; i += 2)
        Renew(m_pairs[i]);
    m_traces.Clear();
    m_mirror.Lose();
    // Of each that is left, its note and its number, once.
    EXPECT_EQ(m_traces.Messages().size(), Pairs);
    for (std::size_t i = 1; i < Pairs; i += 2)
        EXPECT_EQ(m_pairs[i].number->GetValue(), 0);
}

TEST_F(MirrorWithManyEdits, ARequestIsNotForgottenBecauseALaterOneWasAnsweredFirst) {
    Pair& pair = m_pairs.front();
    pair.note->SetValue(S("first"));
    pair.note->SetValue(S("second"));
    m_mirror.SendEdits();
    Answer(2, vt::EResult::Done);
    Renew(pair);
    m_traces.Clear();
    Answer(1, vt::EResult::Denied);  // nobody is left who could be told
    EXPECT_EQ(m_traces.Messages().size(), 0U);
}

}  // namespace
