// SPDX-License-Identifier: Apache-2.0
// Who hears what, and in which order, when items go; and what observers may do meanwhile.
#include <platform/values/tree.h>
#include <platform/values/valueaccess.h>

#include <tests/support/printing.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/tracerecorder.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

using values::Node;
using values::Tree;
using values::Value;

/// A tree "/a/b" with values "/a/b/v1", "/a/b/n/v2", "/a/b/v3"; one observer on everything, which writes down
/// "path:code" as it is told.
class DestructionTest : public testing::Test {
  protected:
    DestructionTest() {
        for (const QString& path :
             {QStringLiteral("/a/b/v1"), QStringLiteral("/a/b/n/v2"), QStringLiteral("/a/b/v3")})
            values::CreateValue<Value<int>>(path, &log);
        for (const QString& path :
             {QStringLiteral("/"), QStringLiteral("/a"), QStringLiteral("/a/b"), QStringLiteral("/a/b/n")})
            tree->FindNode(path)->AddObserver(&log);
        log.React([this](Observable* source, TChangeCode code) {
            auto* const item = dynamic_cast<values::TreeItem*>(source);
            told << QStringLiteral("%1:%2").arg(item->GetPathName()).arg(code);
            const auto action = actions.find(told.last());
            if (action != actions.end()) action->second();
        });
    }
    ~DestructionTest() override { actions.clear(); }

    Node* Find(const char* path) const { return tree->FindNode(QLatin1String(path)); }

    QStringList told;
    std::map<QString, std::function<void()>> actions;  ///< done when that line is told
    RecordingObserver log;
    std::unique_ptr<Tree> tree = std::make_unique<Tree>();
};

QStringList Lines(const char* text) {
    return QString::fromLatin1(text).split(QLatin1Char(' '));
}

TEST_F(DestructionTest, RunsFromTheTopAndThenTellsThoseAbove) {
    tree->Delete(Find("/a/b"));
    EXPECT_EQ(told, Lines("/a/b:18 /a/b/v1:2 /a/b/n:18 /a/b/n/v2:2 /a/b/v3:2 /a:17 /a:15 /:15"));
    EXPECT_EQ(Find("/a/b"), nullptr);
}

TEST_F(DestructionTest, OfAValueTellsItAndThoseAbove) {
    tree->Delete(tree->FindItem(QStringLiteral("/a/b/v1")));
    EXPECT_EQ(told, Lines("/a/b/v1:2 /a/b:17 /a/b:15 /a:15 /:15"));
}

TEST_F(DestructionTest, WithDeleteIsTheSame) {
    delete Find("/a/b");
    EXPECT_EQ(told, Lines("/a/b:18 /a/b/v1:2 /a/b/n:18 /a/b/n/v2:2 /a/b/v3:2 /a:17 /a:15 /:15"));
}

TEST_F(DestructionTest, OfTheTreeTellsEveryItemOnce) {
    tree.reset();
    EXPECT_EQ(told, Lines("/:18 /a:18 /a/b:18 /a/b/v1:2 /a/b/n:18 /a/b/n/v2:2 /a/b/v3:2"));
}

TEST_F(DestructionTest, OfADetachedNodeTellsItsItems) {
    RecordingObserver observer;
    {
        Node node(QStringLiteral("N"));
        node.AddObserver(&observer);
        node.CreateChild(Value<int>(), QStringLiteral("V"))->AddObserver(&observer);
    }
    EXPECT_EQ(observer.Codes(), (std::vector<TChangeCode>{16, 15, 18, 2}));
}

TEST_F(DestructionTest, ANodeThatGoesStillHasItsChildrenAndItsPlace) {
    Node* const b = Find("/a/b");
    bool hadChildren = false;
    actions[QStringLiteral("/a/b:18")] = [&] {
        hadChildren = b->CountChildren() == 3 && b->FindChild(QStringLiteral("v1")) != nullptr &&
                      b->GetTreeItems().size() == 3 && b->GetParent() == Find("/a");
    };
    tree->Delete(b);
    EXPECT_TRUE(hadChildren);
}

TEST_F(DestructionTest, WhatGoesIsNotFoundAnyMore) {
    actions[QStringLiteral("/a/b:18")] = [&] {
        EXPECT_EQ(Find("/a/b"), nullptr);
        EXPECT_EQ(tree->FindItem(QStringLiteral("/a/b/v1")), nullptr);
        EXPECT_EQ(Find("/a")->CountChildren(), 0);
        EXPECT_TRUE(Find("/a")->GetTreeItems().empty());
    };
    tree->Delete(Find("/a/b"));
    EXPECT_TRUE(told.contains(QStringLiteral("/a/b:18")));
}

TEST_F(DestructionTest, NothingCanBeAddedToANodeThatGoes) {
    Node* const b = Find("/a/b");
    actions[QStringLiteral("/a/b:18")] = [&] {
        EXPECT_EQ(b->CreateChild(Value<int>(), QStringLiteral("new")), nullptr);
    };
    tree->Delete(b);
    EXPECT_TRUE(told.contains(QStringLiteral("/a/b:18")));
}

TEST_F(DestructionTest, WhoHearsOfItMayPutANewOneInItsPlace) {
    Value<int>* created = nullptr;
    actions[QStringLiteral("/a/b/v1:2")] = [&] {
        created = values::ProvideValue<Value<int>>(QStringLiteral("/a/b/v1"), 7, false, nullptr);
    };
    tree->Delete(Find("/a/b"));
    ASSERT_NE(created, nullptr);
    EXPECT_EQ(tree->FindItem(QStringLiteral("/a/b/v1")), created);
    EXPECT_EQ(created->GetValue(), 7);
    EXPECT_EQ(Find("/a/b")->CountChildren(), 1);
}

TEST_F(DestructionTest, WhoHearsOfItMayDeleteItAgain) {
    Node* const b = Find("/a/b");
    actions[QStringLiteral("/a/b:18")] = [&] { tree->Delete(b); };
    tree->Delete(b);
    EXPECT_EQ(told, Lines("/a/b:18 /a/b/v1:2 /a/b/n:18 /a/b/n/v2:2 /a/b/v3:2 /a:17 /a:15 /:15"));
}

TEST_F(DestructionTest, WhoHearsOfItMayDeleteItsParent) {
    actions[QStringLiteral("/a/b:18")] = [&] { tree->Delete(Find("/a")); };
    tree->Delete(Find("/a/b"));
    EXPECT_EQ(told.count(QStringLiteral("/a:18")), 1);
    EXPECT_EQ(told.filter(QStringLiteral("v3:2")).size(), 1);
    EXPECT_EQ(Find("/a"), nullptr);
}

TEST_F(DestructionTest, WhoHearsOfAValueMayDeleteItsParent) {
    actions[QStringLiteral("/a/b/v1:2")] = [&] { tree->Delete(Find("/a/b")); };
    tree->Delete(tree->FindItem(QStringLiteral("/a/b/v1")));
    EXPECT_EQ(told.first(), QStringLiteral("/a/b/v1:2"));
    EXPECT_EQ(told.filter(QStringLiteral("v1:2")).size(), 1) << "it goes once";
    EXPECT_EQ(Find("/a/b"), nullptr);
}

TEST_F(DestructionTest, WhoHearsOfItMayDeleteWhatIsStillToGo) {
    Node* const b = Find("/a/b");
    actions[QStringLiteral("/a/b/v1:2")] = [&] { tree->Delete(b->FindChild(QStringLiteral("v3"))); };
    tree->Delete(b);
    EXPECT_EQ(told.count(QStringLiteral("/a/b/v3:2")), 1);
    EXPECT_EQ(told.count(QStringLiteral("/a:17")), 1);
}

TEST_F(DestructionTest, WhoHearsOfANewChildMayDeleteTheNode) {
    actions[QStringLiteral("/a/b:16")] = [&] { tree->Delete(Find("/a/b")); };
    Find("/a/b")->CreateChild(Value<int>(), QStringLiteral("new"));
    EXPECT_EQ(Find("/a/b"), nullptr);
    EXPECT_EQ(told.count(QStringLiteral("/a/b:15")), 0) << "a node that is gone tells nothing";
    EXPECT_EQ(told.count(QStringLiteral("/a:17")), 1);
}

TEST_F(DestructionTest, WhoHearsOfAChangeOfStructureMayDeleteWhatIsAbove) {
    actions[QStringLiteral("/a/b:15")] = [&] { tree->Delete(Find("/a")); };
    Find("/a/b/n")->CreateChild(Value<int>(), QStringLiteral("new"));
    EXPECT_EQ(Find("/a"), nullptr);
    EXPECT_EQ(told.count(QStringLiteral("/a:15")), 0);
    EXPECT_EQ(told.count(QStringLiteral("/:17")), 1);
    EXPECT_EQ(told.last(), QStringLiteral("/:15"));
}

TEST_F(DestructionTest, ManyMayComeWhileOneGoes) {
    Node* const b = Find("/a/b");
    actions[QStringLiteral("/a/b/v1:2")] = [&] {
        for (int i = 0; i < 100; ++i)
            b->CreateChild(Value<int>(), QStringLiteral("new%1").arg(i));
        EXPECT_EQ(b->FindChild(QStringLiteral("v1")), nullptr) << "it is not found among many either";
        EXPECT_NE(b->CreateChild(Value<int>(), QStringLiteral("v1")), nullptr);
    };
    tree->Delete(b->FindChild(QStringLiteral("v1")));
    EXPECT_EQ(b->CountChildren(), 103);
    EXPECT_NE(b->FindChild(QStringLiteral("v1")), nullptr);
}

TEST_F(DestructionTest, ATreeThatGoesTakesNothingAnyMore) {
    Tree* const going = tree.get();
    Value<int> value;
    value.SetName(QStringLiteral("late"));
    for (const QString& line : {QStringLiteral("/:18"), QStringLiteral("/a/b/v1:2")})
        actions[line] = [&] {
            EXPECT_FALSE(going->AddValue(QStringLiteral("/a"), &value));
            EXPECT_FALSE(going->AddValue(QStringLiteral("/x/y"), &value));
        };
    tree.reset();
    EXPECT_EQ(value.GetParent(), nullptr);
}

TEST_F(DestructionTest, WhoSetsAValueMayLoseItsWholeTree) {
    auto* const value = values::FindValue<Value<int>>(QStringLiteral("/a/b/v1"), nullptr, nullptr);
    actions[QStringLiteral("/a/b/v1:3")] = [&] { tree.reset(); };
    value->SetValue(1);
    EXPECT_EQ(Tree::Instance(), nullptr);
    EXPECT_EQ(told.count(QStringLiteral("/a/b/v1:2")), 1);
}

TEST_F(DestructionTest, TheRootStays) {
    const TraceRecorder traces;
    tree->Delete(tree->GetRoot());
    EXPECT_TRUE(told.isEmpty());
    EXPECT_EQ(traces.Records().size(), 1U);
    EXPECT_NE(Find("/a/b/n"), nullptr);
}

TEST_F(DestructionTest, OfNothingDoesNothing) {
    tree->Delete(nullptr);
    EXPECT_TRUE(told.isEmpty());
}

TEST_F(DestructionTest, ADetachedItemCanBeDeletedToo) {
    auto* const node = new Node(QStringLiteral("alone"));
    node->AddObserver(&log);
    tree->Delete(node);
    EXPECT_EQ(told, Lines("alone:18"));
}

}  // namespace
