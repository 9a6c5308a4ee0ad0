// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/policypanel.h>

#include <devicecontrol/multichannelserver/common/mcspolicy.h>

#include <platform/values/tree.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <QtWidgets/QCheckBox>

namespace {

TEST(PolicyPanelTest, HasABoxWithACaptionForEachPolicy) {
    const values::Tree tree;
    const PolicyPanel panel;
    for (const MCSPolicy* const policy : MCSPolicy::s_NameMCSPolicyMap) {
        const auto* const box = panel.findChild<QCheckBox*>(policy->GetName());
        ASSERT_NE(box, nullptr) << policy->GetName().toStdString();
        EXPECT_FALSE(box->text().isEmpty());
        EXPECT_NE(box->text(), policy->GetName());
    }
}

}  // namespace
