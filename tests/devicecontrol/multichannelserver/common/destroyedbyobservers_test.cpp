// SPDX-License-Identifier: Apache-2.0
// Whoever is told of a change may destroy the data object that it is about, at any moment.
#include <devicecontrol/multichannelserver/common/mcscommands.h>
#include <devicecontrol/multichannelserver/common/mcsconfigdata.h>
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatus.h>
#include <devicecontrol/multichannelserver/common/mcspolicyset.h>
#include <devicecontrol/multichannelserver/common/mcsstatus.h>

#include <tests/devicecontrol/multichannelserver/common/fakecfg.h>
#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>
#include <tests/support/meddler.h>
#include <tests/support/scrapped.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>
#include <type_traits>

namespace {

using treeaccess::Text;

const QString basePath = Text("/MultiChannelServer/Object");

values::Node& PolicyNode() {
    return *values::Tree::Instance()->ProvideNode(basePath);
}

/// Runs \a act on a new object for every moment at which anybody hears of anything, and destroys the object
/// at that moment. \return how many moments there were.
template <class Object>
int DestroyAtEveryMoment(const std::function<std::unique_ptr<Object>()>& make,
                         const std::function<void(Object&)>& act) {
    for (int moment = 1;; ++moment) {
        SCOPED_TRACE(moment);
        std::unique_ptr<Object> object;
        Meddler meddler(moment, [&object] { object.reset(); });
        values::Tree tree;
        object = make();
        meddler.WatchAllBelow(*tree.GetRoot());
        if constexpr (std::is_base_of_v<Observable, Object>) meddler.Watch(*object);
        meddler.Start();
        act(*object);
        const bool isDestroyed = meddler.Stop();
        if (!isDestroyed) return moment - 1;
        EXPECT_EQ(object, nullptr);
        if (const values::Node* const node = tree.FindNode(basePath)) {
            // Nobody but the meddler is left.
            EXPECT_EQ(treeaccess::CountObservers(node), 1 + node->CountChildren());
        }
    }
}

using Set = Scrapped<MCSPolicySet>;

struct PolicySetRow {
    const char* name;
    std::function<void(Set&)> act;
};

void PrintTo(const PolicySetRow& row, std::ostream* stream) {
    *stream << row.name;
}

class APolicySetDestroyedByObservers : public testing::TestWithParam<PolicySetRow> {
  protected:
    static std::unique_ptr<Set> MakeSet() {
        auto set = std::make_unique<Set>();
        set->Add(MCSPolicy::MAYBIT);
        set->Add(MCSPolicy::SEESMASTERJOBRF);
        return set;
    }
};

TEST_P(APolicySetDestroyedByObservers, WhileItIsShown) {
    const auto make = [] {
        auto set = MakeSet();
        set->ShowViewInTree(&PolicyNode(), false);
        return set;
    };
    EXPECT_GE(DestroyAtEveryMoment<Set>(make, GetParam().act), 2);
}

TEST_P(APolicySetDestroyedByObservers, WhileItIsHidden) {
    EXPECT_GE(DestroyAtEveryMoment<Set>(MakeSet, GetParam().act), 1);
}

INSTANTIATE_TEST_SUITE_P(
    Table, APolicySetDestroyedByObservers,
    testing::Values(PolicySetRow{"Add", [](Set& set) { set.Add(MCSPolicy::MAYCAL); }},
                    PolicySetRow{"Remove", [](Set& set) { set.Remove(MCSPolicy::MAYBIT); }},
                    PolicySetRow{"SetContains", [](Set& set) { set.SetContains(MCSPolicy::MAYCAL, true); }},
                    PolicySetRow{"AddAll", [](Set& set) { set.AddAll(); }},
                    PolicySetRow{"RemoveAll", [](Set& set) { set.RemoveAll(); }},
                    PolicySetRow{"SetToDefaultPolicy", [](Set& set) { set.SetToDefaultPolicy(); }},
                    PolicySetRow{"ReadFromCfg",
                                 [](Set& set) {
                                     FakeCfg cfg;
                                     cfg.WriteBool(Text("MayBIT"), false);
                                     cfg.WriteBool(Text("MayCal"), true);
                                     cfg.WriteBool(Text("MayRestartJob"), true);
                                     set.ReadFromCfg(&cfg);
                                 }}),
    testing::PrintToStringParamName());

class APolicySetShownToObservers : public testing::TestWithParam<bool> {};

TEST_P(APolicySetShownToObservers, MayBeDestroyed) {
    const auto make = [] {
        const QString path = PolicyNode().GetPathName();
        treeaccess::PutValue<values::Value<bool>>(path, "MayCal")->SetValue(true);
        treeaccess::PutValue<values::Value<bool>>(path, "MayBIT");
        auto set = std::make_unique<Set>();
        set->Add(MCSPolicy::MAYBIT);
        return set;
    };
    const auto show = [](Set& set) { set.ShowViewInTree(&PolicyNode(), GetParam()); };
    EXPECT_GE(DestroyAtEveryMoment<Set>(make, show), 10);
}

INSTANTIATE_TEST_SUITE_P(EitherWay, APolicySetShownToObservers, testing::Bool(),
                         [](const auto& row) { return row.param ? "TheTreeWins" : "TheSetWins"; });

TEST(DestroyedByObservers, APolicySetWhoseSwitchIsTurned) {
    const auto make = [] {
        auto set = std::make_unique<Set>();
        set->ShowViewInTree(&PolicyNode(), false);
        return set;
    };
    const auto turn = [](Set&) {
        treeaccess::ValueAt<values::Value<bool>>(basePath + Text("/MayCal"))->SetValue(true);
    };
    EXPECT_GE(DestroyAtEveryMoment<Set>(make, turn), 3);
}

TEST(DestroyedByObservers, AnMpxORVStatusWhoseClientsComeAndGo) {
    using Status = Scrapped<MCSMpxORVStatus>;
    const auto make = [] { return std::make_unique<Status>(basePath); };
    const auto add = [](Status& status) { status.AddConnectedClient(7, Text("West")); };
    EXPECT_EQ(DestroyAtEveryMoment<Status>(make, add), 3);
    const auto makeWithClient = [&] {
        auto status = make();
        add(*status);
        return status;
    };
    const auto remove = [](Status& status) { status.RemoveConnectedClient(7); };
    EXPECT_GE(DestroyAtEveryMoment<Status>(makeWithClient, remove), 3);
}

template <class Status>
void ChangeEveryValue(Status&) {
    for (values::TreeItem* const item : values::Tree::Instance()->FindNode(basePath)->GetTreeItems())
        item->GetObservable()->NotifyObservers(changecode::ContentChanged);
}

TEST(DestroyedByObservers, AStatusWhoseValuesChange) {
    using Status = Scrapped<MCSStatus>;
    const auto make = [] { return std::make_unique<Status>(basePath); };
    EXPECT_EQ(DestroyAtEveryMoment<Status>(make, ChangeEveryValue<Status>), 22);
}

TEST(DestroyedByObservers, AnMpxORVStatusWhoseValuesChange) {
    using Status = Scrapped<MCSMpxORVStatus>;
    const auto make = [] { return std::make_unique<Status>(basePath); };
    EXPECT_EQ(DestroyAtEveryMoment<Status>(make, ChangeEveryValue<Status>), 12);
}

TEST(DestroyedByObservers, CommandsWhoseValueGoes) {
    using Commands = Scrapped<MCSCommands>;
    const auto make = [] { return std::make_unique<Commands>(&basePath); };
    const auto remove = [](Commands&) { treeaccess::DeleteAt(basePath); };
    EXPECT_GE(DestroyAtEveryMoment<Commands>(make, remove), 2);
}

}  // namespace
