// SPDX-License-Identifier: Apache-2.0
// What an operator arranges in tables is there again at the next start.
#include <apps/mcconsole/consolewindow.h>

#include <platform/config/cfgcenter.h>
#include <platform/values/tree.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <QtCore/QSortFilterProxyModel>
#include <QtCore/QTemporaryDir>
#include <QtGui/QMouseEvent>
#include <QtTest/QTest>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTableView>

#include <memory>
#include <string>

namespace {

struct TableRow {
    const char* name;
    const char* page;
    const char* table;
    bool isSorted;
};

class KeptTables : public testing::TestWithParam<TableRow> {
  protected:
    KeptTables() {
        CfgCenter::Instance().SetStorePath(m_directory.filePath(QStringLiteral("console.ini")));
        Open();
    }
    ~KeptTables() override {
        m_window.reset();
        CfgCenter::Instance().SetStorePath(QString());
    }

    void Open() {
        m_window = std::make_unique<ConsoleWindow>(VtClientOptions());
        m_window->resize(1500, 800);  // where all columns have room
        m_window->show();
        auto* const page = m_window->findChild<QWidget*>(QString::fromLatin1(GetParam().page));
        m_window->GetTabs()->setCurrentWidget(page);
        QCoreApplication::processEvents();
        m_columns =
            m_window->findChild<QTableView*>(QString::fromLatin1(GetParam().table))->horizontalHeader();
    }
    void Restart() {
        m_window->close();
        m_window.reset();
        Open();
    }
    /// By the mouse, as far as \a by pixels.
    void DragBorder(int column, int by) {
        const int border = m_columns->sectionViewportPosition(column) + m_columns->sectionSize(column) - 1;
        Drag(QPoint(border, m_columns->height() / 2), by);
    }
    static void Move(QWidget& widget, const QPoint& to) {
        QMouseEvent event(QEvent::MouseMove, to, widget.mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(&widget, &event);
    }
    void Drag(const QPoint& from, int by) {
        QWidget* const viewport = m_columns->viewport();
        QTest::mousePress(viewport, Qt::LeftButton, Qt::NoModifier, from);
        for (int step = 1; step <= 4; ++step)
            Move(*viewport, from + QPoint(by * step / 4, 0));
        QTest::mouseRelease(viewport, Qt::LeftButton, Qt::NoModifier, from + QPoint(by, 0));
    }

    QTemporaryDir m_directory;
    values::Tree m_tree;
    std::unique_ptr<ConsoleWindow> m_window;
    QHeaderView* m_columns = nullptr;
};

TEST_P(KeptTables, KeepTheWidthsOfTheirColumns) {
    const int before = m_columns->sectionSize(1);
    DragBorder(1, 37);
    ASSERT_EQ(m_columns->sectionSize(1), before + 37);
    Restart();
    EXPECT_EQ(m_columns->sectionSize(1), before + 37);
}

TEST_P(KeptTables, KeepTheOrderOfTheirColumns) {
    ASSERT_TRUE(m_columns->sectionsMovable());
    m_columns->moveSection(2, 0);
    Restart();
    EXPECT_EQ(m_columns->logicalIndex(0), 2);
    EXPECT_EQ(m_columns->logicalIndex(1), 0);
}

TEST_P(KeptTables, KeepWhatTheyAreSortedBy) {
    if (!GetParam().isSorted) {
        EXPECT_FALSE(m_columns->isSortIndicatorShown()) << "events stand as they happened";
        return;
    }
    const QPoint title(m_columns->sectionViewportPosition(3) + 20, m_columns->height() / 2);
    QTest::mouseClick(m_columns->viewport(), Qt::LeftButton, Qt::NoModifier, title);
    QTest::mouseClick(m_columns->viewport(), Qt::LeftButton, Qt::NoModifier, title);
    ASSERT_EQ(m_columns->sortIndicatorSection(), 3);
    const Qt::SortOrder order = m_columns->sortIndicatorOrder();
    Restart();
    EXPECT_EQ(m_columns->sortIndicatorSection(), 3);
    EXPECT_EQ(m_columns->sortIndicatorOrder(), order);
    const auto* const model =
        qobject_cast<QSortFilterProxyModel*>(static_cast<QTableView*>(m_columns->parentWidget())->model());
    ASSERT_NE(model, nullptr);
    EXPECT_EQ(model->sortColumn(), 3);
    EXPECT_EQ(model->sortOrder(), order);
}

INSTANTIATE_TEST_SUITE_P(, KeptTables,
                         testing::Values(TableRow{"Events", "Events", "EventsTable", false},
                                         TableRow{"MpxOrvs", "MpxORVs", "MpxORVList", true}),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
