// SPDX-License-Identifier: Apache-2.0
// The page with all MpxORVs, by mouse and keys.
#include <apps/pages/mpxorvlistpage.h>
#include <apps/pages/mpxorvs/mpxorvcells.h>
#include <apps/pages/mpxorvs/mpxorvtable.h>

#include <tests/apps/mcconsole/mpxorvtree.h>
#include <tests/support/waituntil.h>

#include <gmock/gmock.h>

#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTableView>

namespace {

using testing::ElementsAre;

class MpxOrvListPageTest : public testing::Test {
  protected:
    MpxOrvListPageTest() {
        for (const char* const name : {"Van", "Mast", "Harbour"})
            MpxOrvTree::Add(MpxOrvTree::Dynamic(name));
        MpxOrvTree::Add(MpxOrvTree::Static("Tower"));
        Bind();
        page.resize(900, 600);
        page.show();
        QApplication::setActiveWindow(&page);
        QCoreApplication::processEvents();
    }

    void Bind(EMCSControlTreeSegments segments = AllSegments) {
        page.Bind(QStringLiteral("/Server"), segments);
    }
    void Flush() { page.findChild<MpxOrvTable*>()->Flush(); }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (int row = 0; row < view.model()->rowCount(); ++row)
            names.push_back(view.model()->index(row, mpxorvcells::Name).data().toString().toStdString());
        return names;
    }
    int RowOf(const char* name) const {
        const std::vector<std::string> names = Names();
        return static_cast<int>(std::find(names.begin(), names.end(), name) - names.begin());
    }
    void Click(const char* name) {
        const QRect cell = view.visualRect(view.model()->index(RowOf(name), 0));
        QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
    }
    void ClickHeader(int column) {
        QHeaderView* const header = view.horizontalHeader();
        const QPoint middle(header->sectionViewportPosition(column) + header->sectionSize(column) / 2,
                            header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, middle);
    }
    /// Which row is selected, and which one's details are shown.
    std::string Selected() const {
        const QModelIndexList rows = view.selectionModel()->selectedRows();
        return rows.isEmpty() ? "" : rows.front().data().toString().toStdString();
    }
    std::string Details() const {
        return page.findChild<QGroupBox*>(QStringLiteral("MpxORVDetails"))->title().toStdString();
    }
    std::string Count() const {
        return page.findChild<QLabel*>(QStringLiteral("MpxORVCount"))->text().toStdString();
    }

    MpxOrvTree tree;
    MpxOrvListPage page;
    QTableView& view = *page.findChild<QTableView*>(QStringLiteral("MpxORVList"));
    QLineEdit& filter = *page.findChild<QLineEdit*>(QStringLiteral("MpxORVFilter"));
};

TEST_F(MpxOrvListPageTest, BeginsWithStaticOnesAndTheFirstOneChosen) {
    EXPECT_THAT(Names(), ElementsAre("Tower", "Harbour", "Mast", "Van"));
    EXPECT_EQ(Selected(), "Tower");
    EXPECT_EQ(Details(), "Tower");
    EXPECT_EQ(Count(), "MpxORVs: 4");
}

TEST_F(MpxOrvListPageTest, RowsAreAsHighAsTheyAreToBe) {
    for (int row = 0; row < 4; ++row)
        EXPECT_EQ(view.rowHeight(row), 22);
    EXPECT_TRUE(view.verticalHeader()->isHidden());
}

TEST_F(MpxOrvListPageTest, NothingThatIsUsualIsCut) {
    MpxOrvTree::Tune(MpxOrvTree::Dynamic("Mast"), 1234.005e6,
                     qPrintable(QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs)));
    MpxOrvTree::MakeMaster(MpxOrvTree::Dynamic("Mast"), true);
    Flush();
    page.resize(1600, 600);
    QCoreApplication::processEvents();  // all columns have room
    for (int column = 0; column < mpxorvcells::Clients; ++column)
        EXPECT_GE(view.columnWidth(column), view.sizeHintForIndex(view.model()->index(0, column)).width())
            << mpxorvcells::Title(column).toStdString();
}

TEST_F(MpxOrvListPageTest, TheOneThatIsThereAtFirstStaysWhoeverComesBeforeIt) {
    MpxOrvTree::MakeMaster(MpxOrvTree::Dynamic("Mast"), true);
    Flush();
    ASSERT_EQ(Names().front(), "Mast");
    EXPECT_EQ(Selected(), "Tower") << "somebody may be about to switch what is shown of it";
    EXPECT_EQ(Details(), "Tower");
}

TEST_F(MpxOrvListPageTest, TheFirstOneTakesThePlaceOfOneThatNobodyChoseAndThatIsGone) {
    MpxOrvTree::Remove(MpxOrvTree::Static("Tower"));
    Flush();
    EXPECT_EQ(Details(), "Harbour");
}

TEST_F(MpxOrvListPageTest, WhoClicksAtTheOneThatIsThereAtFirstHasChosenIt) {
    Click("Tower");
    MpxOrvTree::Remove(MpxOrvTree::Static("Tower"));
    Flush();
    EXPECT_EQ(Selected(), "") << "nobody chose another one";
    EXPECT_EQ(Details(), "No MpxORV is chosen");
}

TEST_F(MpxOrvListPageTest, AClickOnAColumnSortsByItAndASecondOneTheOtherWay) {
    MpxOrvTree::Tune(MpxOrvTree::Dynamic("Mast"), 118e6);
    MpxOrvTree::Tune(MpxOrvTree::Dynamic("Van"), 1090e6);
    Flush();
    ClickHeader(mpxorvcells::Frequency);
    EXPECT_THAT(Names(), ElementsAre("Tower", "Harbour", "Mast", "Van"));
    ClickHeader(mpxorvcells::Frequency);
    EXPECT_THAT(Names(), ElementsAre("Van", "Mast", "Tower", "Harbour"));
}

TEST_F(MpxOrvListPageTest, AClickChoosesWhoseDetailsAreShown) {
    Click("Mast");
    EXPECT_EQ(Selected(), "Mast");
    EXPECT_EQ(Details(), "Mast");
    QTest::keyClick(&view, Qt::Key_Down);
    EXPECT_EQ(Details(), "Van");
    QTest::keyClick(&view, Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(Details(), "Tower");
}

TEST_F(MpxOrvListPageTest, TheChoiceHoldsWhateverChanges) {
    Click("Mast");
    ClickHeader(mpxorvcells::Name);
    ClickHeader(mpxorvcells::Name);
    EXPECT_EQ(Selected(), "Mast");
    MpxOrvTree::MakeMaster(MpxOrvTree::Dynamic("Mast"), true);
    Flush();
    EXPECT_EQ(RowOf("Mast"), 0);
    EXPECT_EQ(Selected(), "Mast");
    MpxOrvTree::Add(MpxOrvTree::Dynamic("Zulu"));
    MpxOrvTree::Remove(MpxOrvTree::Dynamic("Harbour"));
    Flush();
    EXPECT_EQ(Selected(), "Mast");
    EXPECT_EQ(Details(), "Mast");
}

TEST_F(MpxOrvListPageTest, WhatWasChosenIsChosenAgainWhenItComesBack) {
    Click("Mast");
    MpxOrvTree::Remove(MpxOrvTree::Dynamic("Mast"));
    Flush();
    EXPECT_EQ(Selected(), "") << "nobody chose another one";
    EXPECT_EQ(Details(), "No MpxORV is chosen");
    MpxOrvTree::Add(MpxOrvTree::Dynamic("Mast"));
    Flush();
    EXPECT_EQ(Selected(), "Mast");
    EXPECT_EQ(Details(), "Mast");
}

TEST_F(MpxOrvListPageTest, DoesNotCountWhatItMayNotRead) {
    Bind(StatusSegment);
    Flush();
    EXPECT_EQ(Count(), "MpxORVs: not known");
    Bind();
    Flush();
    EXPECT_EQ(Count(), "MpxORVs: 4");
}

TEST_F(MpxOrvListPageTest, TheChoiceOutlivesALostConnection) {
    Click("Mast");
    Bind(NoSegments);
    EXPECT_EQ(Details(), "No MpxORV is chosen");
    Bind();
    EXPECT_EQ(Selected(), "Mast");
    EXPECT_EQ(Details(), "Mast");
}

TEST_F(MpxOrvListPageTest, IsFilteredByItsKeyAndWhatIsTyped) {
    Click("Mast");
    QTest::keyClick(&view, Qt::Key_F, Qt::ControlModifier);
    ASSERT_TRUE(filter.hasFocus());
    QTest::keyClicks(&filter, QStringLiteral("va"));
    EXPECT_THAT(Names(), ElementsAre("Van"));
    EXPECT_EQ(Count(), "MpxORVs: 1 of 4");
    EXPECT_EQ(Selected(), "");
    EXPECT_EQ(Details(), "No MpxORV is chosen");
    QTest::keyClick(&filter, Qt::Key_Backspace);
    QTest::keyClick(&filter, Qt::Key_Backspace);
    EXPECT_EQ(Selected(), "Mast");
    EXPECT_EQ(Details(), "Mast");
}

TEST_F(MpxOrvListPageTest, TabLeadsFromTheListToTheDetails) {
    view.setFocus();
    QTest::keyClick(&view, Qt::Key_Tab);
    const QWidget* const focus = QApplication::focusWidget();
    ASSERT_NE(focus, nullptr);
    EXPECT_EQ(focus->objectName(), QStringLiteral("MpxORVComment"));
}

TEST_F(MpxOrvListPageTest, ManyThatComeAndGoKeepTheChoice) {
    Click("Mast");
    for (int i = 0; i < 200; ++i)
        MpxOrvTree::Add(MpxOrvTree::Dynamic(qPrintable(QStringLiteral("A%1").arg(i))));
    Flush();
    EXPECT_EQ(Selected(), "Mast");
    for (int i = 0; i < 200; i += 2)
        MpxOrvTree::Remove(MpxOrvTree::Dynamic(qPrintable(QStringLiteral("A%1").arg(i))));
    Flush();
    EXPECT_EQ(view.model()->rowCount(), 104);
    EXPECT_EQ(Selected(), "Mast");
    EXPECT_EQ(Details(), "Mast");
}

TEST_F(MpxOrvListPageTest, WhatIsNotKnownToHoldLooksSo) {
    const auto description = [this] { return view.accessibleDescription().toStdString(); };
    EXPECT_EQ(description(), "");
    auto* const mode = values::FindValue<values::ValueSelection>(
        MpxOrvTree::Dynamic("Mast") + QLatin1String("/Status/OperationMode"), nullptr, nullptr);
    mode->SetState(values::Stale);
    Flush();
    EXPECT_EQ(description(), "Not connected");
    EXPECT_EQ(view.model()->rowCount(), 4) << "the last content stays";
    mode->SetState(values::Valid);
    Flush();
    EXPECT_EQ(description(), "");
    Bind(NoSegments);
    EXPECT_EQ(description(), "Not connected");
}

TEST_F(MpxOrvListPageTest, MayGoWhileItShowsSomething) {
    auto other = std::make_unique<MpxOrvListPage>();
    other->Bind(QStringLiteral("/Server"), AllSegments);
    other->show();
    other.reset();
}

/// Else it would be laid out again and again, with a bar every other time.
TEST_F(MpxOrvListPageTest, RestsOnceItsColumnsFitHoweverWideItIs) {
    constexpr int narrowest = 760;
    constexpr int widest = 1700;
    for (int width = narrowest; width <= widest; width += 10) {
        page.resize(width, 600);
        RunTurns(10);
        const QSize settled = view.viewport()->size();
        for (int turn = 0; turn < 3; ++turn) {
            RunTurns(1);
            ASSERT_EQ(view.horizontalScrollBar()->maximum(), 0) << width;
            ASSERT_EQ(view.viewport()->height(), settled.height()) << width;
        }
    }
}

}  // namespace
