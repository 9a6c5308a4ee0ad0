// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/gts/blanking.h>
#include <devicecontrol/multichannelserver/common/gts/blankingclient.h>
#include <devicecontrol/multichannelserver/common/gts/datamodule.h>

#include <platform/values/tree.h>
#include <platform/values/value.h>

#include <tests/devicecontrol/multichannelserver/common/gts/fakemodules.h>
#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>
#include <tests/support/printing.h>
#include <tests/support/waituntil.h>

#include <QtWidgets/QTreeWidget>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

/// Data modules with everything around them: tree, Blanking, a tree widget, and a network of fake modules.
class DataModuleTest : public testing::Test {
  protected:
    using Number = values::ValueNumeric<int>;
    using Assignments = values::ValueList<double>;

    DataModuleTest() {
        Blanking::Instance();
        m_widget.setColumnCount(DataModule::ColumnCount);
    }
    ~DataModuleTest() override { Blanking::Instance()->FreeInstance(); }

    static QString Text(const char* text) { return treeaccess::Text(text); }
    static QString Path(const char* below) { return Text("/ORVServer/GTS/") + Text(below); }
    static Number* NumberAt(const char* below) { return treeaccess::ValueAt<Number>(Path(below)); }
    static std::vector<double> AssignmentsAt(const char* below) {
        const auto* const list = treeaccess::ValueAt<Assignments>(Path(below));
        return list != nullptr ? list->GetItems() : std::vector<double>();
    }
    static QString StatusOf(const DataModule& module) { return module.text(DataModule::StatusColumn); }
    bool IsBlanked(double frequency) {
        return Blanking::Instance()->IsFrequencyBlanked(frequency, &m_client);
    }

    std::unique_ptr<DataModule> Make(int index = 0, const char* type = "ADAM-6051") {
        return std::make_unique<DataModule>(&m_widget, index, Text(type), m_ip, PollInterval(1));
    }
    /// A module of twelve inputs, whose first two have frequencies, and that is connected.
    std::unique_ptr<DataModule> MakeConnected(unsigned bits) {
        m_modules.Read(m_ip, bits);
        auto module = Make();
        module->SetFrequency(0, First);
        module->SetFrequency(1, Second);
        module->Connect();
        EXPECT_TRUE(WaitUntil([&] { return module->IsConnected(); }));
        return module;
    }

    static constexpr double First = 118100000.0;
    static constexpr double Second = 121500000.0;

    const QString m_ip = QStringLiteral("10.0.0.1");
    FakeModules m_modules;
    values::Tree m_tree;
    QTreeWidget m_widget;
    BlankingClient m_client;
};
