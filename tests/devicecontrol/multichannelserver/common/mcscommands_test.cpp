// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcscommands.h>

#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>
#include <vector>

namespace {

using treeaccess::ContentAt;
using treeaccess::DeleteAt;
using treeaccess::PutValue;
using treeaccess::Text;
using Switch = values::Value<bool>;

class MCSCommandsInTree : public testing::Test {
  protected:
    values::Tree m_tree;
    const QString m_basePath = Text("/MultiChannelServer/Command");
};

TEST_F(MCSCommandsInTree, ProvidesOneCommandThatIsOnAtFirst) {
    const MCSCommands commands(&m_basePath);
    EXPECT_EQ(treeaccess::ChildNames(m_tree.FindNode(m_basePath)),
              std::vector<QString>{Text("ShallBeConnected")});
    EXPECT_EQ(ContentAt(Text("/MultiChannelServer/Command/ShallBeConnected")), Text("true"));
}

TEST_F(MCSCommandsInTree, TheValueIsTheOneAtItsPath) {
    MCSCommands commands(&m_basePath);
    EXPECT_EQ(commands.GetShallBeConnected_ValuePath(), Text("/MultiChannelServer/Command/ShallBeConnected"));
    ASSERT_NE(commands.GetShallBeConnectedValue(), nullptr);
    EXPECT_EQ(m_tree.FindItem(commands.GetShallBeConnected_ValuePath()), commands.GetShallBeConnectedValue());
    commands.GetShallBeConnectedValue()->SetValue(false);
    EXPECT_EQ(ContentAt(commands.GetShallBeConnected_ValuePath()), Text("false"));
}

TEST_F(MCSCommandsInTree, KeepsTheContentOfAValueThatExists) {
    PutValue<Switch>(m_basePath, "ShallBeConnected")->SetValue(false);
    const MCSCommands commands(&m_basePath);
    EXPECT_FALSE(commands.GetShallBeConnectedValue()->GetValue());
}

TEST_F(MCSCommandsInTree, TwoObjectsOnOnePathShareTheValue) {
    const MCSCommands first(&m_basePath);
    first.GetShallBeConnectedValue()->SetValue(false);
    const MCSCommands second(&m_basePath);
    EXPECT_EQ(second.GetShallBeConnectedValue(), first.GetShallBeConnectedValue());
    EXPECT_FALSE(second.GetShallBeConnectedValue()->GetValue());
}

TEST_F(MCSCommandsInTree, WithoutABasePathTheCommandIsInTheConfiguration) {
    MCSCommands commands(nullptr);
    EXPECT_EQ(commands.GetShallBeConnected_ValuePath(), Text("/MultiChannelServer/Config/ShallBeConnected"));
    EXPECT_EQ(m_tree.FindItem(Text("/MultiChannelServer/Config/ShallBeConnected")),
              commands.GetShallBeConnectedValue());
    EXPECT_EQ(m_tree.FindItem(m_basePath), nullptr);
}

TEST_F(MCSCommandsInTree, ABasePathThatEndsInASlashGivesADoubledOne) {
    const QString basePath = Text("/C/");
    MCSCommands commands(&basePath);
    EXPECT_EQ(commands.GetShallBeConnected_ValuePath(), Text("/C//ShallBeConnected"));
    EXPECT_EQ(m_tree.FindItem(Text("/C/ShallBeConnected")), commands.GetShallBeConnectedValue());
}

TEST_F(MCSCommandsInTree, ForgetsTheValueThatGoesAway) {
    MCSCommands commands(&m_basePath);
    DeleteAt(commands.GetShallBeConnected_ValuePath());
    EXPECT_EQ(commands.GetShallBeConnectedValue(), nullptr);
    EXPECT_EQ(commands.GetShallBeConnected_ValuePath(), Text("/MultiChannelServer/Command/ShallBeConnected"));
}

TEST_F(MCSCommandsInTree, KeepsAValueThatIsOnlyStaleOrChanged) {
    MCSCommands commands(&m_basePath);
    Switch* const value = commands.GetShallBeConnectedValue();
    value->SetState(values::Stale);
    value->SetValue(false);
    for (const TChangeCode code : {3, 4, 15, 18})
        static_cast<IObserver&>(commands).Update(value, code);
    EXPECT_EQ(commands.GetShallBeConnectedValue(), value);
    EXPECT_EQ(value->CountObservers(), 1);
    EXPECT_FALSE(value->GetValue());
}

TEST_F(MCSCommandsInTree, KeepsItsValueWhenAnotherGoesAway) {
    MCSCommands commands(&m_basePath);
    Switch* const other = PutValue<Switch>(m_basePath, "Other");
    other->AddObserver(&commands);
    m_tree.Delete(other);
    EXPECT_NE(commands.GetShallBeConnectedValue(), nullptr);
}

TEST_F(MCSCommandsInTree, DestructionDetachesAndLeavesTheValue) {
    auto commands = std::make_unique<MCSCommands>(&m_basePath);
    Switch* const value = commands->GetShallBeConnectedValue();
    EXPECT_EQ(value->CountObservers(), 1);
    value->SetValue(false);
    commands.reset();
    EXPECT_EQ(value->CountObservers(), 0);
    EXPECT_EQ(ContentAt(Text("/MultiChannelServer/Command/ShallBeConnected")), Text("false"));
}

TEST_F(MCSCommandsInTree, AreNotCopiedAndHaveNoObservers) {
    EXPECT_FALSE(std::is_copy_constructible_v<MCSCommands>);
    EXPECT_FALSE(std::is_copy_assignable_v<MCSCommands>);
    EXPECT_FALSE((std::is_base_of_v<Observable, MCSCommands>));
}

}  // namespace
