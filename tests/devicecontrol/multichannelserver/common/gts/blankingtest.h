// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/gts/blanking.h>
#include <devicecontrol/multichannelserver/common/gts/blankingclient.h>

#include <platform/values/tree.h>
#include <platform/values/value.h>

#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>

#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

/// A tree, Blanking over it, and modules that are published by hand.
class BlankingTest : public testing::Test {
  protected:
    using Discretes = values::ValueNumeric<int>;
    using Assignments = values::ValueList<double>;

    /// What a data module publishes. The tree owns it.
    struct Module {
        values::Node* node = nullptr;
        Assignments* assignments = nullptr;
        Discretes* discretes = nullptr;
    };

    BlankingTest() { Blanking::Instance(); }
    ~BlankingTest() override { Blanking::Instance()->FreeInstance(); }

    static QString Text(const char* text) { return treeaccess::Text(text); }
    static bool IsBlanked(double frequency, BlankingClient& client) {
        return Blanking::Instance()->IsFrequencyBlanked(frequency, &client);
    }
    bool IsBlanked(double frequency) { return IsBlanked(frequency, m_client); }

    template <class V>
    static V* AddTo(values::Node& node, const char* name) {
        auto value = std::make_unique<V>();
        V* const added = value.get();
        value->SetName(Text(name));
        std::unique_ptr<values::TreeItem> item = std::move(value);
        EXPECT_TRUE(node.AddChild(item));
        return added;
    }
    Module Publish(const char* name, std::vector<double> frequencies, int discretes) {
        Module module;
        auto node = std::make_unique<values::Node>(Text(name));
        module.node = node.get();
        module.discretes = AddTo<Discretes>(*node, "InputDiscretes");
        module.discretes->SetValue(discretes);
        module.assignments = AddTo<Assignments>(*node, "FrequencyAssignments");
        module.assignments->SetItems(std::move(frequencies));
        std::unique_ptr<values::TreeItem> item = std::move(node);
        EXPECT_TRUE(m_tree.AddItem(Text("/ORVServer/GTS"), item));
        return module;
    }

    values::Tree m_tree;
    BlankingClient m_client{Text("test")};
};
