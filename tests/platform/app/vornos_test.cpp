// SPDX-License-Identifier: Apache-2.0
#include <platform/app/vornos.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <QtCore/QSysInfo>

namespace {

TEST(VornOS, TheMachineNameIsTheHostName) {
    const std::unique_ptr<VornOS> system = VornOS::Create();
    ASSERT_NE(system, nullptr);
    EXPECT_EQ(system->GetMachineName(), QSysInfo::machineHostName());
    EXPECT_FALSE(system->GetMachineName().isEmpty());
}

TEST(VornOS, EachOneThatIsCreatedIsAnother) {
    EXPECT_NE(VornOS::Create(), VornOS::Create());
}

}  // namespace
