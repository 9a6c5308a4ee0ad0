// SPDX-License-Identifier: Apache-2.0
#include <platform/values/node.h>

#include <platform/values/value.h>
#include <platform/values/valueselection.h>

#include <tests/support/printing.h>
#include <tests/support/recordingobserver.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

using values::Node;
using values::TreeItem;
using values::Value;
using values::ValueList;
using values::ValueNumeric;
using values::ValueSelection;
using Codes = std::vector<TChangeCode>;

QString Name(int number) {
    return QStringLiteral("Child%1").arg(number);
}

std::unique_ptr<TreeItem> MakeNode(const QString& name) {
    return std::make_unique<Node>(name);
}

class NodeTest : public testing::Test {
  protected:
    Node node{QStringLiteral("N")};
};

TEST_F(NodeTest, IsANodeWithAnObservable) {
    EXPECT_TRUE(node.IsNode());
    EXPECT_EQ(node.GetObservable(), &node);
    EXPECT_EQ(node.GetName(), QStringLiteral("N"));
    EXPECT_EQ(node.GetParent(), nullptr);
    EXPECT_EQ(node.GetPathName(), QStringLiteral("N"));
}

// Few children are found one by one and many through a table: around the border, and far beyond it.
TEST_F(NodeTest, FindsEachOfItsChildrenHoweverMany) {
    for (int count = 0; count < 300; ++count) {
        ASSERT_EQ(node.FindChild(Name(count)), nullptr);
        TreeItem* const added = node.CreateChild(Value<int>(), Name(count));
        ASSERT_EQ(node.FindChild(Name(count)), added);
        ASSERT_EQ(node.FindChild(Name(0))->GetName(), Name(0));
        ASSERT_EQ(node.CountChildren(), count + 1);
    }
}

TEST_F(NodeTest, KeepsChildrenInTheOrderInWhichTheyWereAdded) {
    for (const int number : {5, 3, 9, 1, 7, 2, 8, 4, 6, 0})
        node.CreateChild(Value<int>(), Name(number));
    delete node.FindChild(Name(9));
    node.CreateChild(Value<int>(), Name(9));
    std::vector<QString> names;
    for (const TreeItem* item : node.GetTreeItems())
        names.push_back(item->GetName());
    std::vector<QString> expected;
    for (const int number : {5, 3, 1, 7, 2, 8, 4, 6, 0, 9})
        expected.push_back(Name(number));
    EXPECT_EQ(names, expected);
}

TEST_F(NodeTest, LeadsThroughItsChildrenFromBothEnds) {
    EXPECT_EQ(node.GetFirstChild(), nullptr);
    EXPECT_EQ(node.GetLastChild(), nullptr);
    for (int i = 0; i < 3; ++i) {
        std::unique_ptr<TreeItem> child = MakeNode(Name(i));
        node.AddChild(child);
    }
    TreeItem* const middle = node.FindChild(Name(1));
    EXPECT_EQ(node.GetFirstChild()->GetNextSibling(), middle);
    EXPECT_EQ(node.GetLastChild()->GetPreviousSibling(), middle);
    EXPECT_EQ(node.GetLastChild(), node.FindChild(Name(2)));
}

TEST_F(NodeTest, ALastChildThatGoesIsTheLastNoMore) {
    for (int i = 0; i < 2; ++i) {
        std::unique_ptr<TreeItem> child = MakeNode(Name(i));
        node.AddChild(child);
    }
    auto* const last = static_cast<Node*>(node.GetLastChild());
    const TreeItem* found = nullptr;
    RecordingObserver observer([&](Observable*, TChangeCode code) {
        if (code == changecode::GoingAway) found = node.GetLastChild();
    });
    last->AddObserver(&observer);
    delete last;
    EXPECT_EQ(found, node.FindChild(Name(0)));
    EXPECT_EQ(node.GetLastChild(), found);
}

TEST_F(NodeTest, ShrinksAndGrowsAgain) {
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 50; ++i)
            node.CreateChild(Value<int>(), Name(i));
        for (int i = 0; i < 50; ++i) {
            delete node.FindChild(Name((i * 7) % 50));
            ASSERT_EQ(node.FindChild(Name((i * 7) % 50)), nullptr);
            ASSERT_EQ(node.CountChildren(), 49 - i);
        }
        ASSERT_TRUE(node.GetTreeItems().empty());
    }
}

TEST_F(NodeTest, ACreatedChildCopiesThePrototype) {
    ValueNumeric<double> prototype(5.0, 1.0, 9.0);
    prototype.SetName(QStringLiteral("Other"));
    prototype.SetDelivery(values::EDelivery::EveryChange);
    RecordingObserver observer;
    prototype.AddObserver(&observer);
    auto* const child = dynamic_cast<ValueNumeric<double>*>(node.CreateChild(prototype, QStringLiteral("F")));
    ASSERT_NE(child, nullptr);
    EXPECT_EQ(child->GetName(), QStringLiteral("F"));
    EXPECT_EQ(child->GetValue(), 5.0);
    EXPECT_EQ(child->GetMin(), 1.0);
    EXPECT_EQ(child->GetMax(), 9.0);
    EXPECT_EQ(child->GetDelivery(), values::EDelivery::EveryChange);
    EXPECT_EQ(child->CountObservers(), 0);
    EXPECT_EQ(child->GetParent(), &node);
    EXPECT_EQ(child->GetPathName(), QStringLiteral("N/F"));
    prototype.DeleteObserver(&observer);
}

TEST_F(NodeTest, RefusesNamesThatNoPathCanFind) {
    node.CreateChild(Value<int>(), QStringLiteral("Taken"));
    for (const QString& name :
         {QString(), QStringLiteral("a/b"), QStringLiteral("/"), QStringLiteral("Taken")}) {
        SCOPED_TRACE(name.toStdString());
        EXPECT_EQ(node.CreateChild(Value<int>(), name), nullptr);
        std::unique_ptr<TreeItem> child = MakeNode(name);
        EXPECT_FALSE(node.AddChild(child));
        EXPECT_NE(child, nullptr) << "a refused child stays with the caller";
    }
    EXPECT_EQ(node.CountChildren(), 1);
}

TEST_F(NodeTest, TakesAnyUnicodeName) {
    const std::vector<QString> names = {QStringLiteral(" "),
                                        QString::fromUtf8("\xF0\x9F\x93\xA1"),
                                        QString::fromUtf8("\xC3\xA4"),
                                        QString::fromUtf8("a\xCC\x88"),
                                        QString(QChar(0)),
                                        QString(QChar(0xD800)),
                                        QStringLiteral("A"),
                                        QStringLiteral("a"),
                                        QString(10000, QLatin1Char('x'))};
    for (const QString& name : names)
        ASSERT_NE(node.CreateChild(Value<int>(), name), nullptr);
    for (const QString& name : names)
        EXPECT_EQ(node.FindChild(name)->GetName(), name);
}

TEST_F(NodeTest, RefusesItselfAndWhatItStandsIn) {
    auto outer = std::make_unique<Node>(QStringLiteral("Outer"));
    std::unique_ptr<TreeItem> innerItem = MakeNode(QStringLiteral("Inner"));
    auto* const inner = static_cast<Node*>(innerItem.get());
    ASSERT_TRUE(outer->AddChild(innerItem));
    std::unique_ptr<TreeItem> outerItem(outer.release());
    EXPECT_FALSE(inner->AddChild(outerItem));
    EXPECT_FALSE(static_cast<Node*>(outerItem.get())->AddChild(outerItem));
    EXPECT_NE(outerItem, nullptr);
}

TEST_F(NodeTest, AddingTells16ToTheNodeAnd15ToItAndEachAncestor) {
    std::unique_ptr<TreeItem> below = MakeNode(QStringLiteral("Below"));
    auto* const child = static_cast<Node*>(below.get());
    node.AddChild(below);
    RecordingObserver onNode;
    RecordingObserver onChild;
    node.AddObserver(&onNode);
    child->AddObserver(&onChild);
    child->CreateChild(Value<int>(), QStringLiteral("V"));
    EXPECT_EQ(onChild.Codes(), (Codes{16, 15}));
    EXPECT_EQ(onNode.Codes(), (Codes{15}));
    child->DeleteObserver(&onChild);
    node.DeleteObserver(&onNode);
}

TEST_F(NodeTest, WhoHearsOfANewChildFindsIt) {
    bool isThere = false;
    RecordingObserver observer([&](Observable*, TChangeCode) {
        isThere = node.FindChild(QStringLiteral("V")) != nullptr && node.CountChildren() == 1;
    });
    node.AddObserver(&observer);
    node.CreateChild(Value<int>(), QStringLiteral("V"));
    EXPECT_TRUE(isThere);
    node.DeleteObserver(&observer);
}

TEST_F(NodeTest, ACreatedChildThatAnObserverDestroysAtOnceIsNull) {
    RecordingObserver observer([&](Observable*, TChangeCode code) {
        if (code == changecode::ChildrenAdded) delete node.FindChild(QStringLiteral("V"));
    });
    node.AddObserver(&observer);
    EXPECT_EQ(node.CreateChild(Value<int>(), QStringLiteral("V")), nullptr);
    EXPECT_EQ(observer.Count(changecode::ChildrenRemoved), 1);
    node.DeleteObserver(&observer);
}

TEST_F(NodeTest, ADeepCopyCopiesEverythingButObserversAndState) {
    RecordingObserver observer;
    std::unique_ptr<TreeItem> inner = MakeNode(QStringLiteral("Inner"));
    auto* const innerNode = static_cast<Node*>(inner.get());
    node.CreateChild(Value<QString>(QStringLiteral("text")), QStringLiteral("Text"));
    node.AddChild(inner);
    node.CreateChild(Value<bool>(true), QStringLiteral("Flag"));
    innerNode->CreateChild(ValueNumeric<int>(3, 1, 5), QStringLiteral("Number"));
    auto* const selection =
        static_cast<ValueSelection*>(innerNode->CreateChild(ValueSelection(), QStringLiteral("Choice")));
    selection->AddItem(QStringLiteral("One"), 1.5, 11, nullptr);
    selection->AddItem(QStringLiteral("Two"), 2.5, 22, nullptr);
    selection->Select(22, nullptr);
    selection->SetState(values::Stale);
    selection->AddObserver(&observer);
    auto* const list =
        static_cast<ValueList<double>*>(innerNode->CreateChild(ValueList<double>(), QStringLiteral("L")));
    list->SetItems({1.0, 2.0});
    list->SetDelivery(values::EDelivery::EveryChange);

    const std::unique_ptr<Node> copy(node.DeepCopy());
    EXPECT_EQ(copy->GetParent(), nullptr);
    EXPECT_EQ(copy->GetName(), QStringLiteral("N"));
    ASSERT_EQ(copy->GetTreeItems().size(), 3U);
    EXPECT_EQ(copy->GetTreeItems()[1]->GetName(), QStringLiteral("Inner"));
    EXPECT_EQ(copy->GetTreeItems()[2]->GetName(), QStringLiteral("Flag"));
    const auto* const text = dynamic_cast<Value<QString>*>(copy->FindChild(QStringLiteral("Text")));
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->GetValue(), QStringLiteral("text"));
    const auto* const innerCopy = dynamic_cast<Node*>(copy->FindChild(QStringLiteral("Inner")));
    ASSERT_NE(innerCopy, nullptr);
    EXPECT_NE(innerCopy, innerNode);
    const auto* const number =
        dynamic_cast<ValueNumeric<int>*>(innerCopy->FindChild(QStringLiteral("Number")));
    ASSERT_NE(number, nullptr);
    EXPECT_EQ(number->GetMax(), 5);
    auto* const choice = dynamic_cast<ValueSelection*>(innerCopy->FindChild(QStringLiteral("Choice")));
    ASSERT_NE(choice, nullptr);
    EXPECT_EQ(choice->GetCurrentText(), QStringLiteral("Two"));
    EXPECT_NE(choice->GetItem(11), selection->GetItem(11));
    EXPECT_EQ(choice->GetState(), values::Valid);
    EXPECT_EQ(choice->CountObservers(), 0);
    const auto* const listCopy = dynamic_cast<ValueList<double>*>(innerCopy->FindChild(QStringLiteral("L")));
    ASSERT_NE(listCopy, nullptr);
    EXPECT_EQ(listCopy->GetItems(), (std::vector<double>{1.0, 2.0}));
    EXPECT_EQ(listCopy->GetDelivery(), values::EDelivery::EveryChange);

    choice->Select(11, nullptr);
    EXPECT_EQ(selection->GetCurrentKey(), 22) << "a copy shares nothing";
    EXPECT_TRUE(observer.Events().empty());
    selection->DeleteObserver(&observer);
}

}  // namespace
