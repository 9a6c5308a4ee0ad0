// SPDX-License-Identifier: Apache-2.0
// What runs per change allocates nothing.
#include <platform/values/tree.h>
#include <platform/values/valueaccess.h>

#include <tests/support/allocationcounter.h>

#include <gtest/gtest.h>

#include <array>
#include <memory>

namespace {

using values::Tree;
using values::Value;
using values::ValueNumeric;
using values::ValueSelection;

class CountingObserver final : public IObserver {
  public:
    void Update(Observable* /*source*/, TChangeCode /*code*/) override { ++told; }
    int told = 0;
};

template <class Action>
std::size_t AllocationsOf(const Action& action) {
    const AllocationCounter counter;
    action();
    return AllocationCounter::Count();
}

class AllocationTest : public testing::Test {
  protected:
    template <class V>
    V* Observed(const char* path, std::size_t count) {
        V* const value = values::CreateValue<V>(QLatin1String(path), nullptr);
        for (std::size_t i = 0; i < count; ++i)
            value->AddObserver(&observers[i]);
        return value;
    }
    int Told() const {
        int sum = 0;
        for (const CountingObserver& observer : observers)
            sum += observer.told;
        return sum;
    }

    std::array<CountingObserver, 10> observers;
    Tree tree;
};

TEST_F(AllocationTest, IsCounted) {
    const auto allocate = [] {
        int* volatile block = new int(1);  // seen by others, as far as the compiler knows
        delete block;
    };
    EXPECT_EQ(AllocationsOf(allocate), 1U);
    EXPECT_GE(AllocationsOf([] { QString(1000, QLatin1Char('x')); }), 1U)
        << "also in libraries that use malloc";
    EXPECT_EQ(AllocationsOf([] {}), 0U);
}

TEST_F(AllocationTest, NoneToSetAndNotifyOneObserver) {
    auto* const value = Observed<Value<int>>("/a/v", 1);
    EXPECT_EQ(AllocationsOf([&] { value->SetValue(1); }), 0U);
    EXPECT_EQ(Told(), 1);
}

TEST_F(AllocationTest, NoneToSetAndNotifyTenObservers) {
    auto* const value = Observed<ValueNumeric<double>>("/a/v", 10);
    EXPECT_EQ(AllocationsOf([&] { value->SetValue(1.5); }), 0U);
    EXPECT_EQ(Told(), 10);
}

TEST_F(AllocationTest, NoneToSetLimits) {
    auto* const value = Observed<ValueNumeric<int>>("/a/v", 10);
    EXPECT_EQ(AllocationsOf([&] {
                  value->SetMin(5);
                  value->SetMax(9);
              }),
              0U);
    EXPECT_EQ(Told(), 30);
}

TEST_F(AllocationTest, NoneToSetAText) {
    auto* const value = Observed<Value<QString>>("/a/v", 10);
    const QString text = QStringLiteral("a text that is shared, not copied");
    EXPECT_EQ(AllocationsOf([&] { value->SetValue(text); }), 0U);
}

TEST_F(AllocationTest, NoneToSelect) {
    auto* const value = Observed<ValueSelection>("/a/v", 0);
    value->AddItem(QStringLiteral("One"), 1.0, 1, nullptr);
    value->AddObserver(&observers[0]);
    EXPECT_EQ(AllocationsOf([&] { value->Select(1, nullptr); }), 0U);
    EXPECT_EQ(Told(), 1);
}

TEST_F(AllocationTest, NoneToFindByPath) {
    const QString path = QStringLiteral("/one/two/three/four");
    Observed<Value<int>>("/one/two/three/four", 0);
    for (int i = 0; i < 100; ++i)
        values::CreateValue<Value<int>>(QStringLiteral("/one/two/three/v%1").arg(i), nullptr);
    EXPECT_EQ(AllocationsOf([&] { tree.FindItem(path); }), 0U);
    EXPECT_EQ(AllocationsOf([&] { values::FindValue<Value<int>>(path, nullptr, nullptr); }), 0U);
    EXPECT_NE(tree.FindItem(path), nullptr);
}

}  // namespace
