// SPDX-License-Identifier: Apache-2.0
// The page with the library's list of MpxORVs: whose policies stand below it.
#include <apps/pages/mpxorvspage.h>

#include <tests/apps/mcconsole/mpxorvtree.h>

#include <gtest/gtest.h>

#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QTableView>

namespace {

class MpxOrvsPageTest : public testing::Test {
  protected:
    MpxOrvsPageTest() {
        for (const char* const name : {"Harbour", "Mast", "Van"})
            MpxOrvTree::Add(MpxOrvTree::Dynamic(name));
        Bind();
        page.resize(900, 700);
        page.show();
        QCoreApplication::processEvents();
    }

    void Bind(EMCSControlTreeSegments segments = AllSegments) {
        page.Bind(QStringLiteral("/Server"), segments);
    }
    void Click(const char* name) {
        for (int row = 0; row < view.model()->rowCount(); ++row) {
            const QModelIndex index = view.model()->index(row, 0);
            if (index.data().toString() == QLatin1String(name))
                QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier,
                                  view.visualRect(index).center());
        }
    }
    std::string Selected() const {
        const QModelIndexList rows = view.selectionModel()->selectedRows();
        return rows.isEmpty() ? "" : rows.front().data().toString().toStdString();
    }
    std::string Details() const {
        return page.findChild<QGroupBox*>(QStringLiteral("MpxORVDetails"))->title().toStdString();
    }

    MpxOrvTree tree;
    MpxOrvsPage page;
    QTableView& view = *page.findChild<QTableView*>();
};

TEST_F(MpxOrvsPageTest, NobodyStepsIntoThePlaceOfTheChosenOneThatIsGone) {
    for (const char* const name : {"Harbour", "Mast", "Van"}) {
        Click(name);
        ASSERT_EQ(Details(), name);
        MpxOrvTree::Remove(MpxOrvTree::Dynamic(name));
        EXPECT_EQ(Selected(), "") << name;
        EXPECT_EQ(Details(), "No MpxORV is chosen") << name;
        MpxOrvTree::Add(MpxOrvTree::Dynamic(name));
        EXPECT_EQ(Selected(), name);
        EXPECT_EQ(Details(), name);
    }
}

TEST_F(MpxOrvsPageTest, WhoComesAndGoesBesideTheChosenOneChangesNothing) {
    Click("Mast");
    MpxOrvTree::Remove(MpxOrvTree::Dynamic("Harbour"));
    MpxOrvTree::Add(MpxOrvTree::Static("Tower"));
    MpxOrvTree::Remove(MpxOrvTree::Dynamic("Van"));
    EXPECT_EQ(Selected(), "Mast");
    EXPECT_EQ(Details(), "Mast");
}

TEST_F(MpxOrvsPageTest, TheFirstOneIsShownUntilSomebodyChoosesAndAgainWhenItIsGone) {
    EXPECT_EQ(Details(), "Harbour");
    MpxOrvTree::Add(MpxOrvTree::Static("Tower"));
    EXPECT_EQ(Details(), "Harbour") << "somebody may be about to switch what is shown of it";
    MpxOrvTree::Remove(MpxOrvTree::Dynamic("Harbour"));
    EXPECT_NE(Details(), "No MpxORV is chosen");
    EXPECT_EQ(Details(), Selected());
}

TEST_F(MpxOrvsPageTest, TheChoiceOutlivesALostConnection) {
    Click("Van");
    Bind(NoSegments);
    EXPECT_EQ(Details(), "No MpxORV is chosen");
    Bind();
    EXPECT_EQ(Selected(), "Van");
    EXPECT_EQ(Details(), "Van");
}

}  // namespace
