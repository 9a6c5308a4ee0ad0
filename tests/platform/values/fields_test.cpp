// SPDX-License-Identifier: Apache-2.0
// What is done with all values of a data object, each time in the order that its table gives.
#include <platform/values/fields.h>

#include <tests/support/printing.h>
#include <tests/support/tracerecorder.h>

#include <gtest/gtest.h>

#include <QtCore/QStringList>

#include <vector>

namespace {

using values::Value;
using values::ValueNumeric;
using values::ValueSelection;

constexpr values::SelItemDesc choices[] = {{"one", 1.0, 1}, {"two", 2.0, 2}};
constexpr values::ValueDescriptor descriptor(choices);

const values::ValueDescriptor& Choices() {
    return descriptor;
}

/// A data object of four values, and one thing that is not in the tree.
class Oven final : public IObserver {
  public:
    struct Fields;

    explicit Oven(bool overwrite = false);
    ~Oven() override;
    Oven(const Oven&) = delete;
    Oven& operator=(const Oven&) = delete;

    QString NamePath() const { return QStringLiteral("/Oven/Name"); }
    void Update(Observable* source, TChangeCode code) override;

    Value<QString>* m_name = nullptr;
    ValueNumeric<int>* m_heat = nullptr;
    ValueSelection* m_programme = nullptr;
    Value<bool>* m_light = nullptr;
    bool m_isClean = true;
    int m_defaultHeat = 180;
    mutable bool m_hadNodeWhenAsked = true;  ///< for the path of the last value
};

struct Oven::Fields {
    struct Flag {
        bool Oven::*member;
        fields::Places places;
    };
    static QString LightPath(const Oven& oven) {
        oven.m_hadNodeWhenAsked = values::Tree::Instance()->FindNode(QStringLiteral("/Oven")) != nullptr;
        return QStringLiteral("/Oven/Light");
    }
    static QString HeatPath(const Oven& /*oven*/) { return QStringLiteral("/Oven/Heat"); }
    static QString ProgrammePath(const Oven& /*oven*/) { return QStringLiteral("/Oven/Programme"); }
    static fields::Within<int> Heat(const Oven& oven) { return {oven.m_defaultHeat, 0, 300}; }

    static constexpr std::tuple Rows = {
        fields::Field{&Oven::m_name, &Oven::NamePath, fields::TypesOwn{}, L"m_name", 1, {2, 4}},
        fields::Field{&Oven::m_heat, HeatPath, Heat, L"m_heat", 2, {1, 3}},
        fields::Field{&Oven::m_programme, ProgrammePath, fields::ItemsOf{Choices, 1}, nullptr, 3, {4, 1}},
        fields::Field{&Oven::m_light, LightPath, fields::Content{true}, L"m_light", 4, {3}},
        Flag{&Oven::m_isClean, {0, 2}},
    };
};

Oven::Oven(bool overwrite) {
    fields::Provide<Fields>(*this, L"oven", overwrite, this);
}

Oven::~Oven() {
    fields::DetachAll<Fields>(*this, this);
}

void Oven::Update(Observable* source, TChangeCode code) {
    if (code == changecode::StateChanged) fields::ForgetIfGoingAway<Fields>(*this, source, this);
}

class AnObjectWithFields : public testing::Test {
  protected:
    QStringList Children() const {
        QStringList names;
        for (const values::TreeItem* item : m_tree.FindNode(QStringLiteral("/Oven"))->GetTreeItems())
            names << item->GetName();
        return names;
    }

    values::Tree m_tree;
};

TEST_F(AnObjectWithFields, ProvidesThemInTheOrderOfTheTable) {
    const Oven oven;
    EXPECT_EQ(Children().join(QLatin1Char(' ')), QStringLiteral("Name Heat Programme Light"));
}

// Whoever hears of a new value may change what the other paths are made of.
TEST_F(AnObjectWithFields, FindsAllPathsBeforeItMakesTheFirst) {
    const Oven oven;
    EXPECT_FALSE(oven.m_hadNodeWhenAsked);
}

TEST_F(AnObjectWithFields, StartsThemAsTheTableSays) {
    const Oven oven;
    EXPECT_EQ(oven.m_name->GetValue(), QString());
    EXPECT_EQ(oven.m_heat->GetValue(), 180);
    EXPECT_EQ(oven.m_heat->GetMax(), 300);
    EXPECT_EQ(oven.m_programme->Count(), 2);
    EXPECT_EQ(oven.m_programme->GetCurrentIndex(), ValueSelection::NoIndex);
    EXPECT_TRUE(oven.m_light->GetValue());
    EXPECT_TRUE(oven.m_isClean);
}

TEST_F(AnObjectWithFields, StartsExistingOnesAnewOnlyIfAskedTo) {
    const Oven first;
    first.m_heat->SetValue(220);
    const Oven second;
    EXPECT_EQ(first.m_heat->GetValue(), 220);
    const Oven third(true);
    EXPECT_EQ(first.m_heat->GetValue(), 180);
    EXPECT_EQ(first.m_heat, third.m_heat);
}

TEST_F(AnObjectWithFields, ObservesEachOfThemOnceAndDetachesAtItsEnd) {
    {
        const Oven oven;
        EXPECT_EQ(oven.m_name->CountObservers(), 1);
        EXPECT_EQ(oven.m_light->CountObservers(), 1);
    }
    for (values::TreeItem* item : m_tree.FindNode(QStringLiteral("/Oven"))->GetTreeItems())
        EXPECT_EQ(item->GetObservable()->CountObservers(), 0);
}

TEST_F(AnObjectWithFields, KnowsItsOwnAndForgetsOnlyTheOneThatGoes) {
    const Oven oven;
    const Value<int> stranger;
    EXPECT_TRUE(fields::Contains<Oven::Fields>(oven, oven.m_heat));
    EXPECT_FALSE(fields::Contains<Oven::Fields>(oven, &stranger));
    oven.m_heat->SetState(values::Stale);
    EXPECT_NE(oven.m_heat, nullptr);
    m_tree.Delete(oven.m_heat);
    EXPECT_EQ(oven.m_heat, nullptr);
    EXPECT_NE(oven.m_name, nullptr);
    EXPECT_FALSE(fields::Contains<Oven::Fields>(oven, nullptr));
}

TEST_F(AnObjectWithFields, GoesThroughThemInEachOrderThatTheTableHolds) {
    const auto lines = [](auto walk) {
        std::vector<int> numbers;
        walk([&numbers](const auto& row) {
            if constexpr (std::is_same_v<std::decay_t<decltype(row)>, Oven::Fields::Flag>)
                numbers.push_back(0);
            else
                numbers.push_back(row.line);
            return true;
        });
        return numbers;
    };
    EXPECT_EQ(lines([](auto visit) { fields::Walk<Oven::Fields, &fields::Places::lookedFor>(visit); }),
              (std::vector<int>{2, 1, 4, 3}));
    EXPECT_EQ(lines([](auto visit) { fields::Walk<Oven::Fields, &fields::Places::read>(visit); }),
              (std::vector<int>{3, 0, 2, 1}));
    EXPECT_EQ(lines([](auto visit) { fields::Walk<Oven::Fields, &fields::Places::written>(visit); }),
              std::vector<int>{});
}

TEST_F(AnObjectWithFields, StopsWhereAVisitSaysSo) {
    int visits = 0;
    EXPECT_FALSE((fields::Walk<Oven::Fields, &fields::Places::read>(
        [&visits](const auto& /*row*/) { return ++visits < 2; })));
    EXPECT_EQ(visits, 2);
}

TEST_F(AnObjectWithFields, SharesThemWithAnother) {
    Oven to;
    const Oven from;
    fields::DetachAll<Oven::Fields>(to, &to);
    EXPECT_EQ(to.m_heat, nullptr);
    fields::Share<Oven::Fields>(to, from);
    EXPECT_EQ(to.m_heat, from.m_heat);
    EXPECT_EQ(to.m_programme, from.m_programme);
    EXPECT_EQ(from.m_heat->CountObservers(), 1);
    fields::AttachAll<Oven::Fields>(to, &to);
    EXPECT_EQ(from.m_heat->CountObservers(), 2);
}

}  // namespace
