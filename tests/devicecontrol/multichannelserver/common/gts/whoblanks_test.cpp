// SPDX-License-Identifier: Apache-2.0
// Which module and input blanks a frequency.
#include <tests/devicecontrol/multichannelserver/common/gts/blankingtest.h>

#include <limits>

namespace {

class TheSourceOfABlanking : public BlankingTest {
  protected:
    /// "Module-0 2"; empty for none.
    static QString Who(double frequency) {
        const auto source = Blanking::Instance()->WhoBlanks(frequency);
        return source ? source->module + QLatin1Char(' ') + QString::number(source->input) : QString();
    }
};

TEST_F(TheSourceOfABlanking, IsTheInputThatIsKeyed) {
    const Module module = Publish("Module-0", {1.0, 118100000.0, 121500000.0}, 7);
    EXPECT_EQ(Who(121500000.0), QString());
    module.discretes->SetValue(3);
    EXPECT_EQ(Who(121500000.0), Text("Module-0 2"));
    EXPECT_EQ(Who(121500000.9), Text("Module-0 2"));
    EXPECT_EQ(Who(121500001.0), QString());
    EXPECT_EQ(Who(118100000.0), QString());
}

TEST_F(TheSourceOfABlanking, IsTheFirstOfSeveral) {
    const Module first = Publish("Module-9", {0.0, 118100000.0, 118100000.0}, 0);
    Publish("Module-1", {118100000.0}, 0);
    EXPECT_EQ(Who(118100000.0), Text("Module-9 1"));
    first.discretes->SetValue(2);
    EXPECT_EQ(Who(118100000.0), Text("Module-9 2"));
    first.discretes->SetValue(6);
    EXPECT_EQ(Who(118100000.0), Text("Module-1 0"));
}

/// Whoever computed it beside Blanking would find others: inputs beyond bit 31, and inputs that nobody has
/// read yet.
TEST_F(TheSourceOfABlanking, IsThereForEverythingThatIsBlankedAndForNothingElse) {
    std::vector<double> frequencies;
    for (int i = 0; i < 40; ++i)
        frequencies.push_back(100.0 + i);
    const Module module = Publish("Module-0", frequencies, std::numeric_limits<int>::max());
    frequencies.insert(frequencies.end(), {200.0, -5.0, 0.0});
    module.assignments->SetItems(frequencies);
    int blanked = 0;
    for (double frequency = -10.0; frequency < 210.0; frequency += 0.5) {
        EXPECT_EQ(!Who(frequency).isEmpty(), IsBlanked(frequency)) << frequency;
        blanked += IsBlanked(frequency) ? 1 : 0;
    }
    EXPECT_EQ(blanked, 2 * 9);
    EXPECT_EQ(Who(139.0), Text("Module-0 39"));
}

TEST_F(TheSourceOfABlanking, IsNotKnownAnyMoreOnceItsModuleWentUnseen) {
    const Module module = Publish("Module-0", {118100000.0}, 0);
    m_tree.Delete(module.node);
    EXPECT_TRUE(IsBlanked(118100000.0));
    EXPECT_EQ(Who(118100000.0), QString());
    m_tree.Delete(m_tree.FindNode(Text("/ORVServer/GTS")));
    EXPECT_EQ(Who(118100000.0), QString());
}

TEST_F(TheSourceOfABlanking, IsToldToAnybodyWhoeverIsExcepted) {
    Publish("Module-0", {118100000.0}, 0);
    Blanking::Instance()->EnableBlankingForClient(&m_client, false);
    EXPECT_FALSE(IsBlanked(118100000.0));
    EXPECT_EQ(Who(118100000.0), Text("Module-0 0"));
}

TEST_F(TheSourceOfABlanking, IsNoneOfWhatCannotBeAFrequency) {
    Publish("Module-0", {1e300, 118100000.0}, 0);
    for (const double frequency :
         {1e300, -1.0, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(Who(frequency), QString()) << frequency;
}

}  // namespace
