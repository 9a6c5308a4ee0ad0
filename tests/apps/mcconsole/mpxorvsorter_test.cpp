// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/mpxorvs/mpxorvcells.h>
#include <apps/pages/mpxorvs/mpxorvorder.h>
#include <apps/pages/mpxorvs/mpxorvsorter.h>
#include <apps/pages/mpxorvs/mpxorvtable.h>

#include <tests/apps/mcconsole/mpxorvtree.h>

#include <gmock/gmock.h>

#include <QtCore/QLocale>

namespace {

using testing::ElementsAre;

class MpxOrvSorterTest : public testing::Test {
  protected:
    void Show() {
        table.SetPaths(MpxOrvTree::StaticPath(), MpxOrvTree::DynamicPath());
        table.Flush();
    }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (int row = 0; row < sorter.rowCount(); ++row)
            names.push_back(sorter.index(row, mpxorvcells::Name).data().toString().toStdString());
        return names;
    }
    static void AddDynamic(std::initializer_list<const char*> names) {
        for (const char* const name : names)
            MpxOrvTree::Add(MpxOrvTree::Dynamic(name));
    }

    MpxOrvTree tree;
    MpxOrvTable table;
    MpxOrvSorter sorter{table};
};

TEST_F(MpxOrvSorterTest, StaticOnesComeFirstAndNamesAsPeopleCount) {
    AddDynamic({"van 10", "Mast", "van 2"});
    MpxOrvTree::Add(MpxOrvTree::Static("Tower"));
    Show();
    EXPECT_THAT(Names(), ElementsAre("Tower", "Mast", "van 2", "van 10"));
}

TEST_F(MpxOrvSorterTest, TheOrderIsTheSameInEveryLanguageAndHoweverTheyCame) {
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::Swedish));  // where Ä stands behind Z
    AddDynamic({"Zug", "Ärmel", "B", "a"});
    Show();
    const std::vector<std::string> swedish = Names();
    QLocale::setDefault(QLocale(QLocale::German));
    MpxOrvTree::Remove(MpxOrvTree::Dynamic("B"));
    Show();
    AddDynamic({"B"});
    Show();
    QLocale::setDefault(before);
    EXPECT_EQ(Names(), swedish);
}

TEST_F(MpxOrvSorterTest, TheMasterStandsOnTopWhicheverWayItIsSorted) {
    AddDynamic({"A", "B", "C"});
    Show();
    MpxOrvTree::MakeMaster(MpxOrvTree::Dynamic("B"), true);
    table.Flush();
    EXPECT_THAT(Names(), ElementsAre("B", "A", "C"));
    sorter.sort(mpxorvcells::Name, Qt::DescendingOrder);
    EXPECT_THAT(Names(), ElementsAre("B", "C", "A"));
    MpxOrvTree::MakeMaster(MpxOrvTree::Dynamic("B"), false);
    MpxOrvTree::MakeMaster(MpxOrvTree::Dynamic("A"), true);
    table.Flush();
    EXPECT_THAT(Names(), ElementsAre("A", "C", "B"));
}

TEST_F(MpxOrvSorterTest, FrequenciesAreNumbersAndTheSameOnesStandByName) {
    AddDynamic({"A", "B", "C", "D"});
    Show();
    MpxOrvTree::Tune(MpxOrvTree::Dynamic("A"), 1000e6);
    MpxOrvTree::Tune(MpxOrvTree::Dynamic("B"), 98.5e6);
    table.Flush();
    sorter.sort(mpxorvcells::Frequency, Qt::DescendingOrder);
    EXPECT_THAT(Names(), ElementsAre("A", "B", "C", "D"));
    sorter.sort(mpxorvcells::Frequency, Qt::AscendingOrder);
    EXPECT_THAT(Names(), ElementsAre("C", "D", "B", "A"));
}

TEST_F(MpxOrvSorterTest, MomentsAreMoments) {
    AddDynamic({"A", "B", "C"});
    Show();
    MpxOrvTree::Tune(MpxOrvTree::Dynamic("A"), 1e8, "2026-11-22T09:00:00.000Z");
    MpxOrvTree::Tune(MpxOrvTree::Dynamic("B"), 1e8, "2025-12-24T10:00:00.000Z");
    table.Flush();
    sorter.sort(mpxorvcells::Since, Qt::DescendingOrder);
    EXPECT_THAT(Names(), ElementsAre("A", "B", "C"));
}

TEST_F(MpxOrvSorterTest, WhatChangesMoves) {
    AddDynamic({"A", "B"});
    Show();
    sorter.sort(mpxorvcells::Frequency, Qt::DescendingOrder);
    MpxOrvTree::Tune(MpxOrvTree::Dynamic("B"), 98.5e6);
    table.Flush();
    EXPECT_THAT(Names(), ElementsAre("B", "A"));
}

struct FilterRow {
    const char* name;
    const char* text;
    std::vector<std::string> left;
};
class MpxOrvFilter : public MpxOrvSorterTest, public testing::WithParamInterface<FilterRow> {};

TEST_P(MpxOrvFilter, Leaves) {
    AddDynamic({"Mast", "Van"});
    MpxOrvTree::Add(MpxOrvTree::Static("Tower"));
    MpxOrvTree::Tune(MpxOrvTree::Dynamic("Mast"), 121.5e6);
    MpxOrvTree::Comment(MpxOrvTree::Static("Tower"), "ATC Nord");
    Show();
    sorter.SetText(QString::fromUtf8(GetParam().text));
    EXPECT_EQ(Names(), GetParam().left);
}

INSTANTIATE_TEST_SUITE_P(Text, MpxOrvFilter,
                         testing::Values(FilterRow{"Nothing", "", {"Tower", "Mast", "Van"}},
                                         FilterRow{"Blanks", "  ", {"Tower", "Mast", "Van"}},
                                         FilterRow{"ANameInOtherLetters", "mAs", {"Mast"}},
                                         FilterRow{"AComment", "nord", {"Tower"}},
                                         FilterRow{"AFrequency", "121.5", {"Mast"}},
                                         FilterRow{"AState", "idle", {"Tower", "Van"}},
                                         FilterRow{"NoPattern", ".*", {}}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(MpxOrvSorterTest, WhatIsFilteredComesBackByItself) {
    AddDynamic({"A", "B"});
    Show();
    sorter.SetText(QStringLiteral("MHz"));
    EXPECT_THAT(Names(), ElementsAre());
    MpxOrvTree::Tune(MpxOrvTree::Dynamic("B"), 98.5e6);
    table.Flush();
    EXPECT_THAT(Names(), ElementsAre("B"));
}

struct NamePair {
    const char* name;
    const char* first;
    const char* second;
};
class MpxOrvNameOrder : public testing::TestWithParam<NamePair> {};

TEST_P(MpxOrvNameOrder, Holds) {
    EXPECT_LT(mpxorvorder::KeyOf(QString::fromUtf8(GetParam().first)),
              mpxorvorder::KeyOf(QString::fromUtf8(GetParam().second)));
}

INSTANTIATE_TEST_SUITE_P(
    Names, MpxOrvNameOrder,
    testing::Values(NamePair{"Numbers", "Van 2", "Van 10"}, NamePair{"NumbersWithZeros", "Van 002", "Van 10"},
                    NamePair{"Cases", "tower", "Van"}, NamePair{"OtherCases", "Tower", "van"},
                    NamePair{"NumbersBeforeLetters", "Van 2", "Van b"},
                    NamePair{"ShorterOnes", "Van", "Van 2"}, NamePair{"NumbersInTheMiddle", "A2b", "A10a"}),
    [](const auto& pair) { return std::string(pair.param.name); });

}  // namespace
