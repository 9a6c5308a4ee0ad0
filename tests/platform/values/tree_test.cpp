// SPDX-License-Identifier: Apache-2.0
#include <platform/values/tree.h>

#include <platform/values/value.h>
#include <platform/values/valuedescriptor.h>

#include <tests/support/printing.h>
#include <tests/support/recordingobserver.h>

#include <gtest/gtest.h>

#include <memory>
#include <thread>

namespace {

using values::Node;
using values::Tree;
using values::TreeItem;
using values::Value;
using Codes = std::vector<TChangeCode>;

std::unique_ptr<Value<int>> MakeValue(const char* name) {
    auto value = std::make_unique<Value<int>>();
    value->SetName(QLatin1String(name));
    return value;
}

TEST(TreeInstance, IsNullBeforeAndAfter) {
    EXPECT_EQ(Tree::Instance(), nullptr);
    {
        const Tree tree;
        EXPECT_EQ(Tree::Instance(), &tree);
    }
    EXPECT_EQ(Tree::Instance(), nullptr);
}

TEST(TreeInstance, IsNullWhileTheTreeGoes) {
    RecordingObserver observer([](Observable*, TChangeCode) { EXPECT_EQ(Tree::Instance(), nullptr); });
    {
        Tree tree;
        tree.ProvideNode(QStringLiteral("/a"))->AddObserver(&observer);
    }
    EXPECT_EQ(observer.Codes(), (Codes{18}));
}

class TreeTest : public testing::Test {
  protected:
    bool Add(const char* parentPath, const char* name) {
        std::unique_ptr<Value<int>> value = MakeValue(name);
        const bool isAdded = tree.AddValue(QLatin1String(parentPath), value.get());
        if (isAdded) value.release();
        return isAdded;
    }
    TreeItem* Find(const char* path) const { return tree.FindItem(QLatin1String(path)); }

    Tree tree;
};

TEST_F(TreeTest, TheRootHasThePathSlash) {
    EXPECT_EQ(tree.GetRoot()->GetPathName(), QStringLiteral("/"));
    EXPECT_EQ(tree.GetRoot()->GetParent(), nullptr);
    EXPECT_EQ(Find("/"), tree.GetRoot());
}

TEST_F(TreeTest, AddValueCreatesMissingParents) {
    ASSERT_TRUE(Add("/a/b/c", "v"));
    EXPECT_NE(tree.FindNode(QStringLiteral("/a/b/c")), nullptr);
    EXPECT_EQ(Find("/a/b/c/v")->GetPathName(), QStringLiteral("/a/b/c/v"));
    EXPECT_EQ(tree.FindNode(QStringLiteral("/a/b/c/v")), nullptr) << "a value is no node";
}

TEST_F(TreeTest, WhatIsNewComesAsOneChange) {
    tree.ProvideNode(QStringLiteral("/a"));
    RecordingObserver onRoot;
    RecordingObserver onA;
    bool wasComplete = false;
    onA.React([&](Observable*, TChangeCode) { wasComplete = Find("/a/b/c/v") != nullptr; });
    tree.GetRoot()->AddObserver(&onRoot);
    tree.FindNode(QStringLiteral("/a"))->AddObserver(&onA);
    ASSERT_TRUE(Add("/a/b/c", "v"));
    EXPECT_EQ(onA.Codes(), (Codes{16, 15}));
    EXPECT_EQ(onRoot.Codes(), (Codes{15}));
    EXPECT_TRUE(wasComplete);
    tree.FindNode(QStringLiteral("/a"))->DeleteObserver(&onA);
    tree.GetRoot()->DeleteObserver(&onRoot);
}

TEST_F(TreeTest, ABuiltSubtreeIsAttachedWhole) {
    std::unique_ptr<TreeItem> subtree = std::make_unique<Node>(QStringLiteral("s"));
    for (const char* name : {"x", "y", "z"})
        static_cast<Node*>(subtree.get())->CreateChild(Value<int>(), QLatin1String(name));
    RecordingObserver onRoot;
    tree.GetRoot()->AddObserver(&onRoot);
    EXPECT_TRUE(tree.AddItem(QStringLiteral("/p/q"), subtree));
    EXPECT_EQ(subtree, nullptr);
    EXPECT_EQ(onRoot.Codes(), (Codes{16, 15}));
    EXPECT_NE(Find("/p/q/s/z"), nullptr);
    tree.GetRoot()->DeleteObserver(&onRoot);
}

TEST_F(TreeTest, RefusalsChangeNothing) {
    ASSERT_TRUE(Add("/a", "v"));
    RecordingObserver onRoot;
    tree.GetRoot()->AddObserver(&onRoot);
    EXPECT_FALSE(Add("/a", "v")) << "taken";
    EXPECT_FALSE(Add("/", "a")) << "taken by a node";
    EXPECT_FALSE(Add("/a", "")) << "no name";
    EXPECT_FALSE(Add("/new/er", "")) << "no name, and no parents are left behind";
    EXPECT_FALSE(Add("/a/v", "x")) << "below a value";
    EXPECT_FALSE(Add("/a/v/w", "x")) << "through a value";
    EXPECT_EQ(Find("/new"), nullptr);
    EXPECT_TRUE(onRoot.Events().empty());
    tree.GetRoot()->DeleteObserver(&onRoot);
}

TEST_F(TreeTest, ProvideNodeFindsOrCreates) {
    Node* const node = tree.ProvideNode(QStringLiteral("/a/b"));
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->GetPathName(), QStringLiteral("/a/b"));
    EXPECT_EQ(tree.ProvideNode(QStringLiteral("//a/b/")), node);
    EXPECT_EQ(tree.ProvideNode(QStringLiteral("/")), tree.GetRoot());
    EXPECT_EQ(tree.ProvideNode(QString()), tree.GetRoot());
}

TEST_F(TreeTest, ProvideNodeGivesNullWhereAValueStandsInTheWay) {
    ASSERT_TRUE(Add("/a", "v"));
    EXPECT_EQ(tree.ProvideNode(QStringLiteral("/a/v")), nullptr);
    EXPECT_EQ(tree.ProvideNode(QStringLiteral("/a/v/x/y")), nullptr);
    EXPECT_EQ(Find("/a/v/x"), nullptr);
}

TEST_F(TreeTest, ANodeThatAnObserverDeletesAtOnceIsNotHandedOut) {
    RecordingObserver killer([&](Observable*, TChangeCode code) {
        if (code == changecode::ChildrenAdded) tree.Delete(Find("/a"));
    });
    tree.GetRoot()->AddObserver(&killer);
    EXPECT_EQ(tree.ProvideNode(QStringLiteral("/a/b")), nullptr);
    tree.GetRoot()->DeleteObserver(&killer);
}

TEST_F(TreeTest, CreateNodeAbsoluteProvidesAndObserves) {
    RecordingObserver observer;
    Node* const node = values::ValueDescriptor::CreateNodeAbsolute(QStringLiteral("/x/y"), &observer);
    ASSERT_EQ(Find("/x/y"), node);
    EXPECT_TRUE(observer.Events().empty());
    node->NotifyObservers(99);
    EXPECT_EQ(observer.Codes(), (Codes{99}));
    EXPECT_EQ(values::ValueDescriptor::CreateNodeAbsolute(QStringLiteral("/x/y"), nullptr), node);
    node->DeleteObserver(&observer);
}

TEST(TreeInstanceless, CreateNodeAbsoluteGivesNull) {
    EXPECT_EQ(values::ValueDescriptor::CreateNodeAbsolute(QStringLiteral("/x"), nullptr), nullptr);
}

#if !defined(NDEBUG)
TEST(TreeDeathTest, ASecondTreeIsAProgrammingError) {
    const Tree tree;
    EXPECT_DEATH({ const Tree second; }, "one tree at a time");
}

TEST(TreeDeathTest, AnotherThreadIsAProgrammingError) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_DEATH(
        {
            Value<int> value;
            std::thread([&value] { value.SetValue(1); }).join();
        },
        "off the main thread");
}
#endif

}  // namespace
