// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatuslistdisplay.h>

#include <tests/devicecontrol/multichannelserver/common/statuslisttest.h>
#include <tests/support/waituntil.h>

#include <QtGui/QHelpEvent>
#include <QtGui/QTextDocument>
#include <QtTest/QTest>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTableView>
#include <QtWidgets/QToolTip>
#include <QtWidgets/QVBoxLayout>

namespace {

class StatusListDisplayTest : public StatusListTest {
  protected:
    StatusListDisplayTest() { m_display.resize(600, 300); }

    QTableView& View() const {
        return *m_display.findChild<QTableView*>(QStringLiteral("MCSMpxORVStatusListView"));
    }
    int CountRows() const { return View().model()->rowCount(); }
    /// What the tool tip of a cell reads.
    QString TipAt(int row, int column) {
        const QRect cell = View().visualRect(View().model()->index(row, column));
        QHelpEvent event(QEvent::ToolTip, cell.center(), View().viewport()->mapToGlobal(cell.center()));
        QApplication::sendEvent(View().viewport(), &event);
        QTextDocument shown;
        if (Qt::mightBeRichText(QToolTip::text()))
            shown.setHtml(QToolTip::text());
        else
            shown.setPlainText(QToolTip::text());
        return shown.toPlainText();
    }

    MCSMpxORVStatusListDisplay m_display;
};

TEST_F(StatusListDisplayTest, IsATableWithoutAMargin) {
    EXPECT_EQ(m_display.objectName(), QStringLiteral("MCSMpxORVStatusListDisplay"));
    const auto* const layout = qobject_cast<QVBoxLayout*>(m_display.layout());
    ASSERT_NE(layout, nullptr);
    EXPECT_EQ(layout->contentsMargins(), QMargins());
    ASSERT_EQ(layout->count(), 1);
    EXPECT_EQ(layout->itemAt(0)->widget(), &View());
    EXPECT_EQ(View().minimumSize(), QSize(200, 80));
    EXPECT_STREQ(m_display.metaObject()->className(), "MCSMpxORVStatusListDisplay");
}

TEST_F(StatusListDisplayTest, ItsModelIsItsChild) {
    EXPECT_EQ(m_display.findChildren<MCSMpxORVStatusListModel*>(QString(), Qt::FindDirectChildrenOnly).size(),
              1);
    EXPECT_EQ(View().model()->parent(), &m_display);
}

/// Rows of two parents, one after the other, in a display; what its header does of rows that go is counted.
class StatusListThatEmpties : public StatusListDisplayTest {
  protected:
    static constexpr int Count = 100;  // of each parent

    StatusListThatEmpties() {
        for (const QString& parent : {s_path, Other()}) {
            m_tree.ProvideNode(parent);
            m_display.AddMpxORVs_ValuePath(parent);
            for (int i = 0; i < Count; ++i)
                m_tree.ProvideNode(parent + QStringLiteral("/N%1").arg(i));
        }
        m_display.show();
        RunTurns(3);
        QObject::connect(View().model(), &QAbstractItemModel::rowsRemoved, &m_context,
                         [this](const QModelIndex&, int first, int last) {
                             ++m_told;
                             if (first != last) ++m_toldTogether;
                         });
        QObject::connect(&Header(), &QHeaderView::sectionCountChanged, &m_context,
                         [this](int, int) { ++m_headerChanges; });
    }
    static QString Other() { return QStringLiteral("/Others"); }
    QHeaderView& Header() const { return *View().verticalHeader(); }

    int m_told = 0;
    int m_toldTogether = 0;
    int m_headerChanges = 0;
    QObject m_context;  ///< whoever is told is gone before the rows that are left
};

TEST_F(StatusListThatEmpties, TellsOfEachRowAndIsCountedAnewOnce) {
    m_tree.Delete(m_tree.FindItem(s_path));
    EXPECT_EQ(m_told, Count);
    EXPECT_EQ(m_toldTogether, 0);
    EXPECT_EQ(m_headerChanges, 1) << "the header looks at all rows each time";
    EXPECT_EQ(CountRows(), Count);
    EXPECT_EQ(Header().count(), Count);
    m_tree.Delete(m_tree.FindItem(Other()));
    EXPECT_EQ(m_headerChanges, 2);
    EXPECT_EQ(Header().count(), 0);
}

TEST_F(StatusListThatEmpties, LeavesTheHeightsOfTheOtherRows) {
    View().setRowHeight(Count + 5, 77);
    View().hideRow(Count + 7);
    m_tree.Delete(m_tree.FindItem(s_path));
    EXPECT_EQ(View().rowHeight(5), 77);
    EXPECT_TRUE(View().isRowHidden(7));
    EXPECT_EQ(Header().hiddenSectionCount(), 1);
    m_tree.Delete(m_tree.FindItem(Other() + QStringLiteral("/N0")));
    EXPECT_EQ(View().rowHeight(4), 77);
    EXPECT_EQ(Header().count(), Count - 1);
}

TEST_F(StatusListThatEmpties, IsTrueToWhoeverHandlesEventsMeanwhile) {
    const auto look = [this] {
        if (m_told != 10) return;
        RunTurns(2);
        EXPECT_EQ(Header().count(), 2 * Count - 10);
    };
    QObject::connect(View().model(), &QAbstractItemModel::rowsRemoved, &m_context, look);
    m_tree.Delete(m_tree.FindItem(s_path));
    EXPECT_EQ(m_told, Count);
    EXPECT_EQ(m_headerChanges, 2);
    EXPECT_EQ(Header().count(), Count);
}

TEST_F(StatusListThatEmpties, MayBeEmptiedByWhoeverIsTold) {
    const auto empty = [this] {
        if (m_told == 10) m_display.RemoveAllMpxORVs_ValuePaths();
    };
    QObject::connect(View().model(), &QAbstractItemModel::rowsAboutToBeRemoved, &m_context, empty);
    m_tree.Delete(m_tree.FindItem(s_path));
    EXPECT_EQ(CountRows(), 0);
    EXPECT_EQ(Header().count(), 0);
}

TEST_F(StatusListDisplayTest, MayBeAWindowOfAParent) {
    QWidget parent;
    const MCSMpxORVStatusListDisplay window(&parent, Qt::Window);
    EXPECT_EQ(window.parentWidget(), &parent);
    EXPECT_TRUE(window.isWindow());
    EXPECT_EQ(window.objectName(), QStringLiteral("MCSMpxORVStatusListDisplay"));
}

TEST_F(StatusListDisplayTest, ShowsAllColumnsAtFirst) {
    for (int column = 0; column < 4; ++column)
        EXPECT_FALSE(View().isColumnHidden(column)) << column;
}

TEST_F(StatusListDisplayTest, HidesTheCommentFromThoseWhoMayNotSeeAll) {
    m_display.SetMaySeeFullStatusInformation(false);
    for (int column = 0; column < 4; ++column)
        EXPECT_EQ(View().isColumnHidden(column), column == 3) << column;
    m_display.SetMaySeeFullStatusInformation(true);
    EXPECT_FALSE(View().isColumnHidden(3));
}

TEST_F(StatusListDisplayTest, ShowsWhatIsBelowThePaths) {
    EXPECT_FALSE(m_display.AddMpxORVs_ValuePath(s_path));
    Add("A/Alpha");
    Add("B/Bravo");
    EXPECT_TRUE(m_display.AddMpxORVs_ValuePath(PathOf("A")));
    EXPECT_TRUE(m_display.AddMpxORVs_ValuePath(PathOf("B")));
    EXPECT_TRUE(m_display.AddMpxORVs_ValuePath(PathOf("A")));
    EXPECT_EQ(CountRows(), 2);
    m_display.RemoveAllMpxORVs_ValuePaths();
    EXPECT_EQ(CountRows(), 0);
    EXPECT_TRUE(m_display.AddMpxORVs_ValuePath(PathOf("B")));
    EXPECT_EQ(View().model()->index(0, 0).data().toString(), QStringLiteral("Bravo"));
}

TEST_F(StatusListDisplayTest, DestroyedWhileBoundItIsNotToldAnyMore) {
    const auto status = Add("Alpha");
    auto display = std::make_unique<MCSMpxORVStatusListDisplay>();
    display->AddMpxORVs_ValuePath(s_path);
    display->show();
    display.reset();
    EXPECT_EQ(CountObserversAt(s_path), 0);
    EXPECT_EQ(CountObserversAt(PathOf("Alpha")), 0);
    status->SetComment(QStringLiteral("to nobody"));
    Remove("Alpha");
}

TEST_F(StatusListDisplayTest, MarkupIsReadAsItIs) {
    const char* const markup = "<b>bold<b> &amp; <img src='file:///x.png'>";
    const auto status = Add("Alpha");
    status->SetComment(QString::fromLatin1(markup));
    status->SetOperationType(QStringLiteral("<h1>Wideband"));
    m_display.AddMpxORVs_ValuePath(s_path);
    m_display.show();
    EXPECT_EQ(TipAt(0, 3), QString::fromLatin1(markup));
    EXPECT_EQ(TipAt(0, 1), QStringLiteral("<h1>Wideband"));
    EXPECT_EQ(View().itemDelegate()->metaObject()->className(), QByteArray("PlainTextDelegate"));
}

TEST_F(StatusListDisplayTest, TheToolTipReadsLikeTheCell) {
    Add("Alpha")->SetComment(QStringLiteral("on the roof"));
    m_display.AddMpxORVs_ValuePath(s_path);
    m_display.show();
    EXPECT_EQ(TipAt(0, 0), QStringLiteral("Alpha"));
    EXPECT_EQ(TipAt(0, 3), QStringLiteral("on the roof"));
    TipAt(0, 2);
    EXPECT_TRUE(WaitUntil([] { return !QToolTip::isVisible(); }));  // nothing to read
}

TEST_F(StatusListDisplayTest, ALongTextIsShownShortened) {
    Add("Alpha")->SetComment(QString(50000, QLatin1Char('x')));
    m_display.AddMpxORVs_ValuePath(s_path);
    m_display.show();
    EXPECT_EQ(View().model()->index(0, 3).data().toString().size(), 50000);
    EXPECT_LT(TipAt(0, 3).size(), 2100);
    View().resizeColumnToContents(3);
    EXPECT_LT(View().columnWidth(3), 10000);
}

TEST_F(StatusListDisplayTest, AChangeIsDrawn) {
    const auto status = Add("Alpha");
    m_display.AddMpxORVs_ValuePath(s_path);
    m_display.show();
    RunTurns(3);
    const QImage before = View().viewport()->grab().toImage();
    status->GetOperationModeValue()->Select(0);
    RunTurns(3);
    EXPECT_NE(View().viewport()->grab().toImage(), before);
}

TEST_F(StatusListDisplayTest, TheKeyboardLeadsThroughTheRowsAndOutOfTheTable) {
    for (const char* name : {"Alpha", "Bravo"})
        Add(name);
    m_display.AddMpxORVs_ValuePath(s_path);
    auto* const next = new QLineEdit(&m_display);
    m_display.layout()->addWidget(next);
    m_display.show();
    m_display.activateWindow();
    View().setFocus();
    ASSERT_TRUE(WaitUntil([this] { return View().hasFocus(); }));
    QTest::keyClick(&View(), Qt::Key_Down);
    QTest::keyClick(&View(), Qt::Key_Down);
    EXPECT_EQ(View().currentIndex().row(), 1);
    QTest::keyClick(&View(), Qt::Key_Tab);
    EXPECT_TRUE(next->hasFocus());
}

TEST_F(StatusListDisplayTest, TellsAssistiveTechnologyWhatTheTableIs) {
    EXPECT_EQ(View().accessibleName(), QStringLiteral("MpxORVs"));
}

/// The same list, but its model numbers the rows.
class NumberingModel final : public MCSMpxORVStatusListModel {
  public:
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        return orientation == Qt::Vertical ? QAbstractTableModel::headerData(section, orientation, role)
                                           : MCSMpxORVStatusListModel::headerData(section, orientation, role);
    }
};

/// The display beside a table that has Qt's own header and a model with row numbers.
class StatusListNumbers : public StatusListDisplayTest {
  protected:
    StatusListNumbers() {
        m_model.addMpxORVs_ValuePath(s_path);
        m_reference.setModel(&m_numbering);
    }
    void AddAndShow(int count) {
        for (int i = 0; i < count; ++i)
            m_tree.ProvideNode(s_path + QStringLiteral("/N%1").arg(i));
        m_numbering.addMpxORVs_ValuePath(s_path);
        m_display.AddMpxORVs_ValuePath(s_path);
        m_reference.resize(m_display.size());
        m_display.show();
        m_reference.show();
        RunTurns(3);
    }
    void ExpectTheSameHeaders() {
        RunTurns(3);
        EXPECT_EQ(View().verticalHeader()->width(), m_reference.verticalHeader()->width());
        EXPECT_EQ(View().verticalHeader()->grab().toImage(), m_reference.verticalHeader()->grab().toImage());
    }

    NumberingModel m_numbering;
    QTableView m_reference;
};

TEST_F(StatusListNumbers, AreDrawnAsInAnyOtherTable) {
    AddAndShow(5);
    const QImage five = View().verticalHeader()->grab().toImage();
    ExpectTheSameHeaders();
    Remove("N1");
    ExpectTheSameHeaders();
    EXPECT_NE(View().verticalHeader()->grab().toImage(), five);
}

TEST_F(StatusListNumbers, HaveRoomAlsoWhereThereAreMany) {
    AddAndShow(1200);
    ExpectTheSameHeaders();
    for (QTableView* const view : {&View(), &m_reference})
        view->scrollToBottom();
    ExpectTheSameHeaders();
}

TEST_F(StatusListNumbers, OfRowsThatAreSelectedStandOut) {
    AddAndShow(5);
    const QImage plain = View().verticalHeader()->grab().toImage();
    for (QTableView* const view : {&View(), &m_reference}) {
        view->selectRow(2);
        view->selectionModel()->select(view->model()->index(4, 1), QItemSelectionModel::Select);
    }
    ExpectTheSameHeaders();
    EXPECT_NE(View().verticalHeader()->grab().toImage(), plain);
}

TEST_F(StatusListNumbers, AreGreyWhileTheListIsDisabled) {
    AddAndShow(5);
    for (QTableView* const view : {&View(), &m_reference})
        view->setEnabled(false);
    ExpectTheSameHeaders();
}

TEST_F(StatusListNumbers, AClickOnOneSelectsItsRow) {
    AddAndShow(5);
    QHeaderView& header = *View().verticalHeader();
    QTest::mouseClick(header.viewport(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(header.width() / 2, header.sectionViewportPosition(3) + 5));
    EXPECT_TRUE(View().selectionModel()->isRowSelected(3, QModelIndex()));
    EXPECT_FALSE(View().selectionModel()->isRowSelected(2, QModelIndex()));
}

TEST_F(StatusListNumbers, AreNotTheModelsBusiness) {
    AddAndShow(2);
    EXPECT_TRUE(qobject_cast<MCSMpxORVStatusListModel*>(View().model()) != nullptr);
    EXPECT_FALSE(View().model()->headerData(0, Qt::Vertical).isValid());
}

}  // namespace
