// SPDX-License-Identifier: Apache-2.0
#include <platform/values/valueselection.h>

#include <tests/support/printing.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/tracerecorder.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

using values::SelectionItem;
using values::SelItemDesc;
using values::ValueSelection;
using Codes = std::vector<TChangeCode>;

constexpr SelItemDesc Colours[] = {{"Red", 0.5, 10}, {"Green", 1.5, 20}, {"Bl\xC3\xA4u", 2.5, 30}};

class ValueSelectionTest : public testing::Test {
  protected:
    ValueSelectionTest() {
        SelItemDesc::AddItems(Colours, 3, &selection);
        selection.AddObserver(&observer);
    }
    ~ValueSelectionTest() override { selection.DeleteObserver(&observer); }

    ValueSelection selection;
    RecordingObserver observer;
};

TEST_F(ValueSelectionTest, AddItemsAddsInOrderAndSelectsNothing) {
    ASSERT_EQ(selection.Count(), 3);
    EXPECT_EQ(selection.GetItemAt(0)->GetName(), QStringLiteral("Red"));
    EXPECT_EQ(selection.GetItemAt(1)->GetValue(), 1.5);
    EXPECT_EQ(selection.GetItemAt(2)->GetKey(), 30);
    EXPECT_EQ(selection.GetItemAt(2)->GetName(), QString::fromUtf8("Bl\xC3\xA4u"));
    EXPECT_EQ(selection.GetCurrentIndex(), -1);
    EXPECT_EQ(selection.GetCurrentKey(), ValueSelection::NoKey);
    EXPECT_EQ(selection.GetCurrentText(), QString());
}

TEST_F(ValueSelectionTest, AddItemsIsOneChange) {
    ValueSelection fresh;
    fresh.AddObserver(&observer);
    SelItemDesc::AddItems(Colours, 3, &fresh);
    EXPECT_EQ(observer.Codes(), (Codes{7}));
    fresh.DeleteObserver(&observer);
}

TEST_F(ValueSelectionTest, AddItemsAgainDoublesNothingAndKeepsTheCurrentItem) {
    selection.Select(20, nullptr);
    observer.Clear();
    SelItemDesc::AddItems(Colours, 3, &selection);
    EXPECT_EQ(selection.Count(), 3);
    EXPECT_EQ(selection.GetCurrentKey(), 20);
    EXPECT_EQ(observer.Codes(), Codes()) << "nothing changed";
}

TEST_F(ValueSelectionTest, AddItemsRenewsTheTextOfAKnownKeyAndAddsTheRest) {
    constexpr SelItemDesc others[] = {{"Grass", 9.0, 20}, {"Black", 4.0, 40}};
    SelItemDesc::AddItems(others, 2, &selection);
    ASSERT_EQ(selection.Count(), 4);
    EXPECT_EQ(selection.GetItemAt(1)->GetName(), QStringLiteral("Grass"));
    EXPECT_EQ(selection.GetItemAt(3)->GetKey(), 40);
}

TEST_F(ValueSelectionTest, ATableMayRepeatAKey) {
    constexpr SelItemDesc twice[] = {{"One", 1.0, 1}, {"Another", 2.0, 1}};
    ValueSelection fresh;
    SelItemDesc::AddItems(twice, 2, &fresh);
    ASSERT_EQ(fresh.Count(), 2);
    EXPECT_EQ(fresh.GetItem(1)->GetName(), QStringLiteral("One")) << "lookups find the first";
}

TEST_F(ValueSelectionTest, AddItemTells8AndReturnsTheItem) {
    const SelectionItem* const item = selection.AddItem(QStringLiteral("Black"), 4.5, 40, nullptr);
    EXPECT_EQ(item->GetName(), QStringLiteral("Black"));
    EXPECT_EQ(item->GetValue(), 4.5);
    EXPECT_EQ(selection.GetItem(40), item);
    EXPECT_EQ(observer.Codes(), (Codes{8}));
    selection.AddItem(QStringLiteral("White"), 5.5, 50, &observer);
    EXPECT_EQ(observer.Codes(), (Codes{8}));
}

TEST_F(ValueSelectionTest, SelectingTells3OnlyOnChange) {
    selection.Select(20, nullptr);
    selection.Select(20, nullptr);
    EXPECT_EQ(selection.GetCurrentIndex(), 1);
    EXPECT_EQ(selection.GetCurrentKey(), 20);
    EXPECT_EQ(selection.GetCurrentText(), QStringLiteral("Green"));
    selection.SelectIndex(2, &observer);
    EXPECT_EQ(selection.GetCurrentKey(), 30);
    EXPECT_EQ(observer.Codes(), (Codes{3}));
}

TEST_F(ValueSelectionTest, AnUnknownKeyOrIndexIsRefusedAndTraced) {
    selection.Select(20, nullptr);
    observer.Clear();
    const TraceRecorder traces;
    selection.Select(99, nullptr);
    selection.SelectIndex(3);
    selection.SelectIndex(-2);
    EXPECT_EQ(selection.GetCurrentKey(), 20);
    EXPECT_EQ(observer.Codes(), Codes());
    EXPECT_EQ(traces.Records().size(), 3U);
}

TEST_F(ValueSelectionTest, NothingCanBeSelected) {
    selection.Select(20, nullptr);
    selection.SelectIndex(ValueSelection::NoIndex);
    EXPECT_EQ(selection.GetCurrentKey(), ValueSelection::NoKey);
    EXPECT_EQ(observer.Codes(), (Codes{3, 3}));
}

TEST_F(ValueSelectionTest, LookupsBeyondTheListGiveNull) {
    EXPECT_EQ(selection.GetItem(99), nullptr);
    EXPECT_EQ(selection.GetItemAt(-1), nullptr);
    EXPECT_EQ(selection.GetItemAt(3), nullptr);
}

TEST_F(ValueSelectionTest, DeletingTheCurrentItemLeavesNoneCurrent) {
    selection.Select(20, nullptr);
    observer.Clear();
    selection.DeleteItem(selection.GetItem(20), nullptr);
    EXPECT_EQ(selection.Count(), 2);
    EXPECT_EQ(selection.GetCurrentIndex(), -1);
    EXPECT_EQ(observer.Codes(), (Codes{9, 3}));
}

TEST_F(ValueSelectionTest, DeletingAnotherItemKeepsTheCurrentOneCurrent) {
    selection.Select(20, nullptr);
    observer.Clear();
    selection.DeleteItem(selection.GetItem(10), nullptr);
    EXPECT_EQ(selection.GetCurrentIndex(), 0);
    EXPECT_EQ(selection.GetCurrentKey(), 20);
    selection.DeleteItem(selection.GetItem(30), nullptr);
    EXPECT_EQ(selection.GetCurrentKey(), 20);
    EXPECT_EQ(observer.Codes(), (Codes{9, 9}));
}

TEST_F(ValueSelectionTest, DeletingAStrangerDoesNothing) {
    ValueSelection other;
    SelectionItem* const foreign = other.AddItem(QStringLiteral("Red"), 0.5, 10, nullptr);
    selection.DeleteItem(foreign, nullptr);
    selection.DeleteItem(nullptr, nullptr);
    EXPECT_EQ(selection.Count(), 3);
    EXPECT_EQ(other.Count(), 1);
    EXPECT_EQ(observer.Codes(), Codes());
}

TEST_F(ValueSelectionTest, DeletingDoesNotTellTheOriginator) {
    selection.Select(10, nullptr);
    observer.Clear();
    selection.DeleteItem(selection.GetItem(10), &observer);
    EXPECT_EQ(observer.Codes(), Codes());
}

TEST_F(ValueSelectionTest, ReplacingTheListKeepsTheCurrentKey) {
    selection.Select(30, nullptr);
    observer.Clear();
    selection.SetItems({{QStringLiteral("Sky"), 1.0, 30}});
    EXPECT_EQ(selection.GetCurrentIndex(), 0);
    EXPECT_EQ(selection.GetCurrentText(), QStringLiteral("Sky"));
    EXPECT_EQ(observer.Codes(), (Codes{7}));
    selection.SetItems({{QStringLiteral("Night"), 1.0, 1}});
    EXPECT_EQ(selection.GetCurrentIndex(), -1);
    EXPECT_EQ(observer.Codes(), (Codes{7, 7, 3}));
}

TEST_F(ValueSelectionTest, EveryChangeIsToldEvenWhenEqual) {
    selection.SetDelivery(values::EDelivery::EveryChange);
    selection.Select(20, nullptr);
    observer.Clear();
    selection.Select(20, nullptr);
    EXPECT_EQ(observer.Codes(), (Codes{3}));
}

TEST_F(ValueSelectionTest, ItMayBeDestroyedBetweenTheTwoNotificationsOfADeletion) {
    auto mortal = std::make_unique<ValueSelection>();
    SelItemDesc::AddItems(Colours, 3, mortal.get());
    mortal->Select(10, nullptr);
    RecordingObserver killer;
    killer.React([&](Observable*, TChangeCode code) {
        if (code == changecode::ItemRemoved) mortal.reset();
    });
    mortal->AddObserver(&killer);
    mortal->DeleteItem(mortal->GetItem(10), nullptr);
    EXPECT_EQ(killer.Codes(), (Codes{9, 2}));
}

TEST_F(ValueSelectionTest, AnItemThatAnObserverDeletesAtOnceIsNull) {
    observer.React([this](Observable*, TChangeCode code) {
        if (code == changecode::ItemAdded) selection.DeleteItem(selection.GetItem(40), nullptr);
    });
    EXPECT_EQ(selection.AddItem(QStringLiteral("Black"), 4.5, 40, nullptr), nullptr);
    EXPECT_EQ(selection.Count(), 3);
    auto mortal = std::make_unique<ValueSelection>();
    RecordingObserver killer([&](Observable*, TChangeCode code) {
        if (code == changecode::ItemAdded) mortal.reset();
    });
    mortal->AddObserver(&killer);
    EXPECT_EQ(mortal->AddItem(QStringLiteral("Black"), 4.5, 40, nullptr), nullptr);
}

TEST_F(ValueSelectionTest, KeysHave64BitsOnEverySystem) {
    constexpr qint64 Large = 5'000'000'000;
    constexpr qint64 LowerHalf = Large & 0xFFFFFFFF;
    selection.AddItem(QStringLiteral("Large"), 0.0, Large, nullptr);
    selection.Select(Large, nullptr);
    EXPECT_EQ(selection.GetCurrentKey(), Large);
    EXPECT_EQ(selection.GetCurrentText(), QStringLiteral("Large"));
    EXPECT_EQ(selection.GetItem(LowerHalf), nullptr);
}

TEST_F(ValueSelectionTest, ItemsKeepTheirAddressAsOthersComeAndGo) {
    SelectionItem* const green = selection.GetItem(20);
    for (long key = 100; key < 200; ++key)
        selection.AddItem(QStringLiteral("x"), 0.0, key, nullptr);
    selection.DeleteItem(selection.GetItem(10), nullptr);
    EXPECT_EQ(selection.GetItem(20), green);
}

}  // namespace
