// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/mpxorvs/mpxorvcells.h>
#include <apps/pages/mpxorvs/mpxorvtable.h>

#include <tests/apps/mcconsole/mpxorvtree.h>
#include <tests/support/printing.h>

#include <gmock/gmock.h>

#include <QtCore/QAbstractItemModel>
#include <QtCore/QDateTime>
#include <QtGui/QFont>

#include <functional>
#include <set>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Range = std::pair<int, int>;

class MpxOrvTableTest : public testing::Test {
  protected:
    MpxOrvTableTest() {
        QObject::connect(&table, &QAbstractItemModel::dataChanged,
                         [this](const QModelIndex& first, const QModelIndex& last) {
                             told.emplace_back(first.row(), last.row());
                         });
        QObject::connect(&table, &QAbstractItemModel::rowsInserted,
                         [this](const QModelIndex&, int first, int last) { came.emplace_back(first, last); });
        QObject::connect(&table, &QAbstractItemModel::rowsRemoved,
                         [this](const QModelIndex&, int first, int last) { went.emplace_back(first, last); });
        QObject::connect(&table, &QAbstractItemModel::modelReset, [this] { ++resets; });
    }

    void Show() { table.SetPaths(MpxOrvTree::StaticPath(), MpxOrvTree::DynamicPath()); }
    static QString Numbered(int number) { return MpxOrvTree::Dynamic(qPrintable(QString::number(number))); }
    /// Adds so many dynamic ones, and shows them.
    void ShowMany(int count) {
        for (int i = 0; i < count; ++i)
            MpxOrvTree::Add(Numbered(i));
        Show();
        Forget();
    }
    void Forget() {
        told.clear();
        came.clear();
        went.clear();
        resets = 0;
    }
    std::string Cell(int row, int column, int role = Qt::DisplayRole) const {
        return table.data(table.index(row, column), role).toString().toStdString();
    }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (int row = 0; row < table.rowCount(); ++row)
            names.push_back(Cell(row, mpxorvcells::Name));
        return names;
    }

    MpxOrvTree tree;
    MpxOrvTable table;
    std::vector<Range> told;
    std::vector<Range> came;
    std::vector<Range> went;
    int resets = 0;
};

TEST_F(MpxOrvTableTest, HasARowForEach) {
    MpxOrvTree::Add(MpxOrvTree::Dynamic("Mast"));
    MpxOrvTree::Add(MpxOrvTree::Static("Tower"));
    Show();
    EXPECT_THAT(Names(), ElementsAre("Tower", "Mast"));
    EXPECT_EQ(Cell(0, mpxorvcells::Kind), "static");
    EXPECT_EQ(Cell(1, mpxorvcells::Kind), "dynamic");
}

TEST_F(MpxOrvTableTest, ShowsWhatTheServerTells) {
    const QString path = MpxOrvTree::Dynamic("Mast");
    MpxOrvTree::Add(path);
    Show();
    EXPECT_EQ(Cell(0, mpxorvcells::State), "Idle");
    EXPECT_EQ(Cell(0, mpxorvcells::Frequency), "");
    EXPECT_EQ(Cell(0, mpxorvcells::Since), "");
    EXPECT_EQ(Cell(0, mpxorvcells::Suppression), "obeys");
    MpxOrvTree::Tune(path, 121.5e6);
    MpxOrvTree::Comment(path, "ATC 2");
    MpxOrvTree::Flag(path + QLatin1String("/Blanking"), false);
    table.Flush();
    EXPECT_EQ(Cell(0, mpxorvcells::State), "Tuned");
    EXPECT_EQ(Cell(0, mpxorvcells::Frequency), "121.500 MHz");
    const QDateTime since(QDate(2020, 2, 3), QTime(4, 5, 6), Qt::UTC);
    const std::string local = since.toLocalTime().toString(QStringLiteral(" HH:mm:ss")).toStdString();
    EXPECT_THAT(Cell(0, mpxorvcells::Since), testing::EndsWith(local)) << "with the date before it";
    EXPECT_EQ(Cell(0, mpxorvcells::Suppression), "ignores");
    EXPECT_EQ(Cell(0, mpxorvcells::Comment), "ATC 2");
}

TEST_F(MpxOrvTableTest, TellsWhoSwitchedTheSuppression) {
    const QString path = MpxOrvTree::Dynamic("Mast");
    MpxOrvTree::Add(path);
    Show();
    const auto tip = [this] { return Cell(0, mpxorvcells::Suppression, Qt::ToolTipRole); };
    EXPECT_EQ(tip(), "obeys\nNot switched so far");
    MpxOrvTree::Text(path, "BlankingSwitchedSince", QStringLiteral("2020-02-03T04:05:06.000Z"));
    table.Flush();
    EXPECT_THAT(tip(), testing::HasSubstr("Switched in the server's own window"));
    MpxOrvTree::Text(path, "BlankingSwitchedBy", QStringLiteral("mcconsole on tower1"));
    table.Flush();
    EXPECT_THAT(tip(), testing::HasSubstr("Switched by mcconsole on tower1"));
}

TEST_F(MpxOrvTableTest, ShowsTheClients) {
    const QString path = MpxOrvTree::Dynamic("Mast");
    MpxOrvTree::Add(path);
    Show();
    MCSMpxORVStatus status(path + QLatin1String("/Status"));
    status.AddConnectedClient(7, QStringLiteral("Receiver"));
    status.AddConnectedClient(8, QStringLiteral("Console"));
    table.Flush();
    EXPECT_EQ(Cell(0, mpxorvcells::Clients), "Receiver, Console");
    status.RemoveConnectedClient(7);
    table.Flush();
    EXPECT_EQ(Cell(0, mpxorvcells::Clients), "Console");
}

TEST_F(MpxOrvTableTest, TheOwnOneIsBold) {
    ShowMany(2);
    const auto isBold = [this](int row) {
        return table.data(table.index(row, 0), Qt::FontRole).value<QFont>().bold();
    };
    table.SetOwn(Numbered(1));
    EXPECT_FALSE(isBold(0));
    EXPECT_TRUE(isBold(1));
    EXPECT_THAT(told, ElementsAre(Range(1, 1)));
    table.SetOwn(QString());
    EXPECT_FALSE(isBold(1));
}

// What is told ---------------------------------------------------------------------------------------------

TEST_F(MpxOrvTableTest, OnlyTouchedRowsAreTold) {
    ShowMany(100);
    MpxOrvTree::Tune(Numbered(41), 145e6);
    MpxOrvTree::Tune(Numbered(40), 145e6);
    MpxOrvTree::Tune(Numbered(60), 145e6);
    EXPECT_THAT(told, IsEmpty()) << "not before the turn";
    table.Flush();
    EXPECT_THAT(told, ElementsAre(Range(40, 41), Range(60, 60)));
}

TEST_F(MpxOrvTableTest, WhatIsAsItWasIsNotTold) {
    ShowMany(1);
    MpxOrvTree::Tune(Numbered(0), 145e6, "");
    MpxOrvTree::Tune(Numbered(0), 0.0, "");
    table.Flush();
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(MpxOrvTableTest, VeryManyRowsAreToldAtOnce) {
    ShowMany(1000);
    for (int i = 100; i < 900; i += 2)
        MpxOrvTree::Tune(Numbered(i), 145e6);
    table.Flush();
    EXPECT_THAT(told, ElementsAre(Range(100, 898)));
}

TEST_F(MpxOrvTableTest, ManyThatComeInATurnAreToldTogether) {
    Show();
    for (int i = 0; i < 1000; ++i)
        MpxOrvTree::Add(Numbered(i));
    EXPECT_EQ(table.rowCount(), 0);
    table.Flush();
    EXPECT_THAT(came, ElementsAre(Range(0, 999)));
}

TEST_F(MpxOrvTableTest, ThoseThatGoAreRemovedAlone) {
    ShowMany(10);
    MpxOrvTree::Remove(Numbered(2));
    MpxOrvTree::Remove(Numbered(3));
    MpxOrvTree::Remove(Numbered(7));
    EXPECT_EQ(Cell(2, mpxorvcells::Name), "2") << "still readable until it is told";
    table.Flush();
    EXPECT_THAT(went, ElementsAre(Range(7, 7), Range(2, 3)));
    EXPECT_THAT(Names(), ElementsAre("0", "1", "4", "5", "6", "8", "9"));
    MpxOrvTree::Tune(Numbered(8), 145e6);
    table.Flush();
    EXPECT_THAT(told, ElementsAre(Range(5, 5)));
}

TEST_F(MpxOrvTableTest, VeryManyThatGoAreOneChange) {
    ShowMany(1000);
    for (int i = 0; i < 1000; i += 2)
        MpxOrvTree::Remove(Numbered(i));
    table.Flush();
    EXPECT_EQ(resets, 1);
    EXPECT_EQ(table.rowCount(), 500);
}

TEST_F(MpxOrvTableTest, OneThatIsMadeAnewInATurnIsAnother) {
    ShowMany(2);
    MpxOrvTree::Tune(Numbered(0), 145e6);
    MpxOrvTree::Remove(Numbered(0));
    MpxOrvTree::Add(Numbered(0));
    table.Flush();
    EXPECT_THAT(Names(), ElementsAre("1", "0"));
    EXPECT_EQ(Cell(1, mpxorvcells::Frequency), "");
    MpxOrvTree::Tune(Numbered(0), 118e6);
    table.Flush();
    EXPECT_EQ(Cell(1, mpxorvcells::Frequency), "118.000 MHz");
}

TEST_F(MpxOrvTableTest, OneThatIsNotCompleteShowsItsNameAlone) {
    const QString path = MpxOrvTree::Dynamic("Mast");
    values::Tree::Instance()->ProvideNode(path);
    Show();
    EXPECT_THAT(Names(), ElementsAre("Mast"));
    EXPECT_EQ(Cell(0, mpxorvcells::State), "");
    EXPECT_EQ(Cell(0, mpxorvcells::Suppression), "");
    MpxOrvTree::Add(path);
    table.Flush();
    EXPECT_EQ(Cell(0, mpxorvcells::State), "Idle");
}

TEST_F(MpxOrvTableTest, WhatGoesFromAnMpxOrvIsNotShownAnyMore) {
    ShowMany(1);
    MpxOrvTree::Tune(Numbered(0), 145e6);
    table.Flush();
    MpxOrvTree::Remove(Numbered(0) + QLatin1String("/Status/TunedFrequency"));
    table.Flush();
    EXPECT_EQ(Cell(0, mpxorvcells::Frequency), "");
    MpxOrvTree::Number(Numbered(0), 118e6);
    table.Flush();
    EXPECT_EQ(Cell(0, mpxorvcells::Frequency), "118.000 MHz");
}

TEST_F(MpxOrvTableTest, WithoutPathsItIsEmpty) {
    ShowMany(3);
    table.SetPaths(QString(), QString());
    EXPECT_EQ(table.rowCount(), 0);
    MpxOrvTree::Tune(Numbered(0), 145e6);  // nobody is interested
    MpxOrvTree::Add(Numbered(3));
    table.Flush();
    EXPECT_EQ(table.rowCount(), 0);
    Show();
    EXPECT_EQ(table.rowCount(), 4);
}

TEST_F(MpxOrvTableTest, ShownAnewItTellsNothingOfWhatIsAsItWas) {
    ShowMany(3);
    Show();
    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(came, IsEmpty());
    EXPECT_THAT(went, IsEmpty());
}

TEST_F(MpxOrvTableTest, KnowsWhenWhatItShowsIsStale) {
    ShowMany(2);
    std::vector<bool> stale;
    QObject::connect(&table, &MpxOrvTable::StaleChanged, [&](bool isStale) { stale.push_back(isStale); });
    auto* const mode = values::FindValue<values::ValueSelection>(
        Numbered(1) + QLatin1String("/Status/OperationMode"), nullptr, nullptr);
    mode->SetState(values::Stale);
    table.Flush();
    EXPECT_TRUE(table.IsStale());
    mode->SetState(values::Valid);
    table.Flush();
    EXPECT_THAT(stale, ElementsAre(true, false));
}

TEST_F(MpxOrvTableTest, MayGoBeforeTheTreeAndAfterIt) {
    auto other = std::make_unique<MpxOrvTable>();
    ShowMany(3);
    other->SetPaths(MpxOrvTree::StaticPath(), MpxOrvTree::DynamicPath());
    other.reset();
    values::Tree::Instance()->Delete(values::Tree::Instance()->FindItem(QStringLiteral("/Server")));
    table.Flush();
    EXPECT_EQ(table.rowCount(), 0);
}

}  // namespace
