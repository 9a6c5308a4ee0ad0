// SPDX-License-Identifier: Apache-2.0
// Whoever hears of what a display adds to the tree, or sets there, may destroy the display or bind it anew.
#include <devicecontrol/multichannelserver/common/mcscommandsdisplay.h>
#include <devicecontrol/multichannelserver/common/mcsconfigdata.h>
#include <devicecontrol/multichannelserver/common/mcsconfigdisplay.h>
#include <devicecontrol/multichannelserver/common/mcslogdisplay.h>
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatuslistdisplay.h>
#include <devicecontrol/multichannelserver/common/mcsstatus.h>
#include <devicecontrol/multichannelserver/common/mcsstatusdisplay.h>

#include <tests/devicecontrol/multichannelserver/common/displaytest.h>
#include <tests/support/meddler.h>
#include <tests/support/scrapped.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>
#include <tuple>
#include <utility>
#include <vector>

namespace {

using treeaccess::Text;

const QString path = Text("/MultiChannelServer/Shown");
const QString otherPath = Text("/Other/Shown");

/// A display of any kind, and how it is bound.
class IShown {
  public:
    virtual ~IShown() = default;
    virtual QWidget& Widget() = 0;
    virtual bool Bind(const QString& to) = 0;
};

template <class Display, auto bind, auto... arguments>
class Shown final : public IShown {
  public:
    ~Shown() override { delete m_display; }
    QWidget& Widget() override { return *m_display; }
    bool Bind(const QString& to) override { return (m_display->*bind)(to); }

  private:
    Scrapped<Display>* m_display = new Scrapped<Display>(arguments...);
};

constexpr auto AllGroups = MCSConfigDisplay::BootConfigGroup | MCSConfigDisplay::JobConfigGroup;
using StatusShown = Shown<MCSStatusDisplay, &MCSStatusDisplay::SetStatus_ValuePath>;
using ConfigShown = Shown<MCSConfigDisplay, &MCSConfigDisplay::SetConfig_ValuePath, AllGroups>;
using CommandsShown = Shown<MCSCommandsDisplay, &MCSCommandsDisplay::SetCommands_ValuePath>;
using LogShown = Shown<MCSLogDisplay, &MCSLogDisplay::SetLogMessage_ValuePath>;
using ListShown = Shown<MCSMpxORVStatusListDisplay, &MCSMpxORVStatusListDisplay::AddMpxORVs_ValuePath>;

struct DisplayRow {
    const char* name;
    std::function<std::unique_ptr<IShown>()> make;
    int moments;  ///< at which others hear of something while it is bound to a node without children, at
                  ///< least
};

void PrintTo(const DisplayRow& row, std::ostream* stream) {
    *stream << row.name;
}

template <class S>
DisplayRow Row(const char* name, int moments) {
    return {name, [] { return std::make_unique<S>(); }, moments};
}

class ADisplay : public testing::TestWithParam<DisplayRow> {
  protected:
    /// Binds a new display to a node without children for every moment at which anybody hears of something,
    /// and does \a act at that moment; \a look afterwards.
    template <class Act, class Look>
    void AtEveryMoment(Act act, Look look) {
        int moment = 1;
        for (bool hasActed = true; hasActed; ++moment) {
            SCOPED_TRACE(moment);
            std::unique_ptr<IShown> display;
            Meddler meddler(moment, [&] { act(display); });
            values::Tree tree;
            tree.ProvideNode(path);
            tree.ProvideNode(otherPath);
            display = GetParam().make();
            meddler.WatchAllBelow(*tree.GetRoot());
            meddler.Start();
            display->Bind(path);
            hasActed = meddler.Stop();
            if (hasActed) look(display, meddler);
            display.reset();
            ExpectNoObserversBut(meddler, *tree.GetRoot());
        }
        EXPECT_GE(moment - 2, GetParam().moments);
    }
    /// The later binding holds.
    static void ExpectNothingOfPath(std::unique_ptr<IShown>&, Meddler& meddler) {
        ExpectNoObserversBut(meddler, *values::Tree::Instance()->FindNode(path));
    }
    static void ExpectNoObserversBut(const Meddler& meddler, values::Node& node) {
        for (values::TreeItem* const item : node.GetTreeItems()) {
            const Observable& observable = *item->GetObservable();
            EXPECT_EQ(observable.CountObservers(), observable.HasObserver(&meddler) ? 1 : 0)
                << item->GetPathName().toStdString();
            if (item->IsNode()) ExpectNoObserversBut(meddler, static_cast<values::Node&>(*item));
        }
    }
};

using ADisplayThatIsBound = ADisplay;

TEST_P(ADisplayThatIsBound, MayBeDestroyed) {
    AtEveryMoment([](std::unique_ptr<IShown>& display) { display.reset(); },
                  [](std::unique_ptr<IShown>& display, Meddler&) { EXPECT_EQ(display, nullptr); });
}

TEST_P(ADisplayThatIsBound, MayLoseItsSubtree) {
    AtEveryMoment([](std::unique_ptr<IShown>&) { treeaccess::DeleteAt(path); },
                  [](std::unique_ptr<IShown>& display, Meddler&) { display->Bind(otherPath); });
}

TEST_P(ADisplayThatIsBound, MayBeUnbound) {
    AtEveryMoment([](std::unique_ptr<IShown>& display) { display->Bind(QString()); }, ExpectNothingOfPath);
}

TEST_P(ADisplayThatIsBound, MayBeBoundElsewhere) {
    AtEveryMoment([](std::unique_ptr<IShown>& display) { display->Bind(otherPath); }, ExpectNothingOfPath);
}

INSTANTIATE_TEST_SUITE_P(Kinds, ADisplayThatIsBound,
                         testing::Values(Row<StatusShown>("Status", 11), Row<ConfigShown>("Config", 9),
                                         Row<CommandsShown>("Commands", 1)),
                         testing::PrintToStringParamName());

using ADisplayOfNoPath = ADisplay;

TEST_P(ADisplayOfNoPath, IsBoundToNothingAndMakesNothing) {
    values::Tree tree;
    tree.ProvideNode(Text("/MpxORV"));
    treeaccess::PutValue<values::Value<QString>>(QString(), "Message")->SetValue(Text("at the root"));
    const std::unique_ptr<IShown> display = GetParam().make();
    const std::vector<QString> before = treeaccess::ChildNames(tree.GetRoot());
    EXPECT_FALSE(display->Bind(QString()));
    EXPECT_FALSE(display->Bind(Text("")));
    EXPECT_EQ(treeaccess::ChildNames(tree.GetRoot()), before);
    EXPECT_EQ(tree.FindNode(Text("/MpxORV"))->CountChildren(), 0);
    EXPECT_EQ(tree.GetRoot()->CountObservers(), 0);
    tree.ProvideNode(Text("/Later"));
    EXPECT_EQ(tree.FindNode(Text("/Later"))->CountChildren(), 0);
}

INSTANTIATE_TEST_SUITE_P(Kinds, ADisplayOfNoPath,
                         testing::Values(Row<StatusShown>("Status", 0), Row<ConfigShown>("Config", 0),
                                         Row<CommandsShown>("Commands", 0), Row<LogShown>("Log", 0),
                                         Row<ListShown>("List", 0)),
                         testing::PrintToStringParamName());

TEST(AStatusDisplayAndItsFlags, TheLaterOfTwoBindingsHolds) {
    std::unique_ptr<MCSStatusDisplay> display;
    Meddler meddler(1, [&] { display->SetStatus_ValuePath(otherPath); });
    values::Tree tree;
    const MCSStatus shown(path);
    const MCSStatus other(otherPath);
    other.GetOnlineValue()->SetValue(true);
    other.GetConnectionStateValue()->SetValue(Text("other"));
    display = std::make_unique<MCSStatusDisplay>();
    meddler.WatchAllBelow(*tree.FindNode(Text("/Gui")));
    meddler.Start();
    EXPECT_TRUE(display->SetStatus_ValuePath(path));
    EXPECT_TRUE(meddler.Stop());
    EXPECT_EQ(displaytest::TextOf(*display, "onlineDisp"), Text("Online"));
    EXPECT_EQ(displaytest::TextOf(*display, "connectionStateDisp"), Text("other"));
    other.GetOnlineValue()->SetValue(false);
    EXPECT_EQ(displaytest::TextOf(*display, "onlineDisp"), Text("Offline"));
    shown.GetOnlineValue()->SetValue(true);
    EXPECT_EQ(displaytest::TextOf(*display, "onlineDisp"), Text("Offline"));
    display.reset();
}

class TheFlagsOfAStatusDisplay : public testing::TestWithParam<std::tuple<int, bool>> {};

TEST_P(TheFlagsOfAStatusDisplay, TellWhoMayDestroyIt) {
    const auto [moment, isOnline] = GetParam();
    Scrapped<MCSStatusDisplay>* display = nullptr;
    Meddler meddler(moment, [&display] { delete std::exchange(display, nullptr); });
    values::Tree tree;
    const MCSStatus status(path);
    status.GetOnlineValue()->SetValue(!isOnline);
    display = new Scrapped<MCSStatusDisplay>();
    display->SetStatus_ValuePath(path);
    meddler.WatchAllBelow(*tree.FindNode(Text("/Gui")));
    meddler.Start();
    status.GetOnlineValue()->SetValue(isOnline);
    EXPECT_TRUE(meddler.Stop());
    EXPECT_EQ(display, nullptr);
}

// There are two flags, and each tells of its change once.
INSTANTIATE_TEST_SUITE_P(Moments, TheFlagsOfAStatusDisplay,
                         testing::Combine(testing::Values(1, 2), testing::Bool()));

}  // namespace
