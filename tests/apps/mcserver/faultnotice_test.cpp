// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/faultnotice.h>

#include <gtest/gtest.h>

namespace {

CodedText Fault(int number) {
    return {ECode::SectionKeysUnknown, {QStringLiteral("Key%1").arg(number)}};
}

TEST(AFaultNotice, IsNotSeenWithoutFaults) {
    FaultNotice notice({});
    EXPECT_TRUE(notice.isHidden());
}

TEST(AFaultNotice, TellsTheFirstFaultsAndHowManyTheLogTells) {
    std::vector<CodedText> faults;
    for (int i = 0; i < static_cast<int>(FaultNotice::MaxShown) + 2; ++i)
        faults.push_back(Fault(i));
    const FaultNotice notice(faults);
    EXPECT_FALSE(notice.isHidden());
    const QStringList lines = notice.GetText().split(QLatin1Char('\n'));
    ASSERT_EQ(lines.size(), static_cast<int>(FaultNotice::MaxShown) + 2);
    EXPECT_TRUE(lines[1].endsWith(QStringLiteral("not read: Key0")));
    EXPECT_EQ(lines.last(), QStringLiteral("The log tells of 2 more."));
}

}  // namespace
