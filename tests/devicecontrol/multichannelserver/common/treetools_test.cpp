// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/treetools.h>

#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>
#include <tests/support/tracerecorder.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <type_traits>
#include <vector>

namespace {

using treeaccess::PutValue;
using treeaccess::Text;

/// Neither a node nor a value.
class OtherItem final : public values::TreeItem {
  public:
    explicit OtherItem(const QString& name) : TreeItem(name) {}
    ~OtherItem() override { SayGoodbye(); }
    Observable* GetObservable() override { return nullptr; }

  protected:
    void NotifyGoingAway() override {}
};

class TreeToolsTest : public testing::Test {
  protected:
    static QString Address(const values::TreeItem* item) {
        const auto address = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(item));
        return QStringLiteral("0x%1").arg(address, 8, 16, QLatin1Char('0'));
    }
    QString NodeLine(const char* path) const {
        return Text(path) + Text(": (Node *)") + Address(m_tree.FindItem(Text(path)));
    }
    QString ValueLine(const char* path) const {
        return Text(path) + Text(": (ValueItem *)") + Address(m_tree.FindItem(Text(path)));
    }

    values::Tree m_tree;
};

TEST_F(TreeToolsTest, IsNeverInstantiated) {
    EXPECT_FALSE(std::is_default_constructible_v<TreeTools>);
    EXPECT_FALSE(std::is_destructible_v<TreeTools>);
}

TEST_F(TreeToolsTest, ACopyOfNothingIsNothing) {
    EXPECT_EQ(TreeTools::DeepCopyOf(nullptr), nullptr);
}

TEST_F(TreeToolsTest, ACopyHoldsAllThatIsBelowAndStandsAlone) {
    PutValue<values::Value<QString>>(Text("/A/B"), "C")->SetValue(Text("content"));
    PutValue<values::Value<int>>(Text("/A"), "D");
    const std::unique_ptr<values::Node> copy(TreeTools::DeepCopyOf(m_tree.FindNode(Text("/A"))));
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->GetParent(), nullptr);
    EXPECT_EQ(treeaccess::ChildNames(copy.get()), (std::vector<QString>{Text("B"), Text("D")}));
    const auto* const below = dynamic_cast<values::Node*>(copy->FindChild(Text("B")));
    ASSERT_NE(below, nullptr);
    EXPECT_EQ(treeaccess::ContentOf(below->FindChild(Text("C"))), Text("content"));
    EXPECT_NE(below->FindChild(Text("C")), m_tree.FindItem(Text("/A/B/C")));
}

TEST_F(TreeToolsTest, TracesTheAddressesOfAllInTheirOrder) {
    PutValue<values::Value<QString>>(Text("/A/B"), "Ü");
    PutValue<values::Value<int>>(Text("/A"), "D");
    PutValue<values::Value<int>>(Text("/A/E/F"), "G");
    PutValue<values::Value<int>>(Text("/Z"), "Aside");
    const TraceRecorder traces(ErrorHandler::TraceWarnings);
    TreeTools::DebugPrintTreeItemAddr(m_tree.FindItem(Text("/A")));
    EXPECT_EQ(traces.Messages(),
              (std::vector<QString>{NodeLine("/A"), NodeLine("/A/B"), ValueLine("/A/B/Ü"), ValueLine("/A/D"),
                                    NodeLine("/A/E"), NodeLine("/A/E/F"), ValueLine("/A/E/F/G")}));
    for (const TraceRecord& record : traces.Records()) {
        EXPECT_EQ(record.file, Text("devicecontrol/multichannelserver/common/treetools"));
        EXPECT_EQ(record.line, record.message.contains(Text("Node")) ? 52 : 61);
        EXPECT_EQ(record.kind, TraceRecord::Trace);
    }
}

TEST_F(TreeToolsTest, TracesAValueAlone) {
    PutValue<values::Value<int>>(Text("/A"), "First");
    PutValue<values::Value<int>>(Text("/A"), "Second");
    const TraceRecorder traces(ErrorHandler::TraceWarnings);
    TreeTools::DebugPrintTreeItemAddr(m_tree.FindItem(Text("/A/First")));
    EXPECT_EQ(traces.Messages(), std::vector<QString>{ValueLine("/A/First")});
}

TEST_F(TreeToolsTest, TracesNothingForNothingOrOtherItems) {
    std::unique_ptr<values::TreeItem> other = std::make_unique<OtherItem>(Text("Other"));
    m_tree.AddItem(Text("/A"), other);
    const TraceRecorder traces(ErrorHandler::TraceWarnings);
    TreeTools::DebugPrintTreeItemAddr(nullptr);
    TreeTools::DebugPrintTreeItemAddr(m_tree.FindItem(Text("/A/Other")));
    EXPECT_TRUE(traces.Records().empty());
    TreeTools::DebugPrintTreeItemAddr(m_tree.FindItem(Text("/A")));
    EXPECT_EQ(traces.Messages(), std::vector<QString>{NodeLine("/A")});
}

TEST_F(TreeToolsTest, TracesNothingUnlessAsked) {
    PutValue<values::Value<int>>(Text("/A"), "B");
    const TraceRecorder traces(ErrorHandler::TraceAssertions | ErrorHandler::TraceDetails);
    TreeTools::DebugPrintTreeItemAddr(m_tree.FindItem(Text("/A")));
    EXPECT_TRUE(traces.Records().empty());
}

TEST_F(TreeToolsTest, WalksATreeThatIsDeeperThanTheStack) {
    std::unique_ptr<values::TreeItem> below = std::make_unique<values::Node>(Text("n"));
    for (int i = 0; i < 200000; ++i) {
        auto node = std::make_unique<values::Node>(Text("n"));
        node->AddChild(below);
        below = std::move(node);
    }
    m_tree.AddItem(Text("/"), below);
    const TraceRecorder traces(ErrorHandler::TraceAssertions);
    TreeTools::DebugPrintTreeItemAddr(m_tree.GetRoot());
    EXPECT_TRUE(traces.Records().empty());
}

}  // namespace
