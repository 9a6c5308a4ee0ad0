// SPDX-License-Identifier: Apache-2.0
#include <tests/devicecontrol/multichannelserver/common/statuslisttest.h>
#include <tests/support/waituntil.h>

#include <QtTest/QAbstractItemModelTester>
#include <QtWidgets/QTableView>

#include <random>

namespace {

/// Two watched nodes below which anything happens in any order, always the same.
class StatusListStorm : public StatusListTest {
  protected:
    StatusListStorm() {
        for (const char* parent : {"A", "B"}) {
            m_tree.ProvideNode(PathOf(parent));
            m_model.addMpxORVs_ValuePath(PathOf(parent));
        }
    }

    int Random(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }
    QString RandomParent() { return PathOf(Random(2) == 0 ? "A" : "B"); }
    values::TreeItem* RandomChild() {
        const values::Node* const parent = m_tree.FindNode(RandomParent());
        if (parent == nullptr || parent->CountChildren() == 0) return nullptr;
        return parent->GetTreeItems()[static_cast<std::size_t>(Random(parent->CountChildren()))];
    }
    void Come() { m_tree.ProvideNode(RandomParent() + QStringLiteral("/N%1").arg(m_count++)); }
    void Go() { m_tree.Delete(RandomChild()); }
    void Change() {
        const values::TreeItem* const child = RandomChild();
        if (child == nullptr) return;
        const QString path = child->GetPathName() + QStringLiteral("/Status/");
        if (auto* const mode =
                treeaccess::ValueAt<values::ValueSelection>(path + QStringLiteral("OperationMode")))
            mode->SelectIndex(Random(mode->Count()));
        if (auto* const comment =
                treeaccess::ValueAt<values::Value<QString>>(path + QStringLiteral("Comment")))
            comment->SetValue(QString::number(Random(1000)));
    }
    void LoseParent() {
        const QString parent = RandomParent();
        treeaccess::DeleteAt(parent);
        m_tree.ProvideNode(parent);
        m_model.addMpxORVs_ValuePath(parent);
    }
    void LoseStatus() {
        if (const values::TreeItem* const child = RandomChild()) {
            const QString path = child->GetPathName() + QStringLiteral("/Status");
            treeaccess::DeleteAt(path);
            if (Random(2) == 0) m_tree.ProvideNode(path);
        }
    }
    void StartOver() {
        m_model.removeAllMpxORVs_ValuePaths();
        for (const char* parent : {"B", "A"})
            m_model.addMpxORVs_ValuePath(PathOf(parent));
    }
    void Happen() {
        const int dice = Random(1000);
        if (dice < 400)
            Come();
        else if (dice < 700)
            Go();
        else if (dice < 980)
            Change();
        else if (dice < 990)
            LoseStatus();
        else if (dice < 997)
            LoseParent();
        else
            StartOver();
    }
    int CountChildren() const {
        return m_tree.FindNode(PathOf("A"))->CountChildren() + m_tree.FindNode(PathOf("B"))->CountChildren();
    }
    /// Each row shows what the tree says of the MpxORV that it names.
    void ExpectTrueRows() {
        for (int row = 0; row < m_model.rowCount(); ++row) {
            const QString name = TextAt(row, 0);
            if (name.isEmpty()) continue;  // without a status
            const QString below = QLatin1Char('/') + name + QStringLiteral("/Status/Comment");
            const QString parent =
                m_tree.FindItem(PathOf("A") + QLatin1Char('/') + name) ? PathOf("A") : PathOf("B");
            EXPECT_EQ(TextAt(row, 3), treeaccess::ContentAt(parent + below)) << row;
        }
    }

    std::mt19937 m_random{20261121};
    int m_count = 0;
};

TEST_F(StatusListStorm, KeepsTheRowsTrueAndTheViewsContent) {
    const QAbstractItemModelTester tester(&m_model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    QTableView view;
    view.setModel(&m_model);
    view.show();
    for (int i = 0; i < 5000; ++i) {
        Happen();
        ASSERT_EQ(m_model.rowCount(), CountChildren()) << i;
        if (i % 250 == 0) {
            RunTurns(1);
            ExpectTrueRows();
        }
    }
    ExpectTrueRows();
    m_model.removeAllMpxORVs_ValuePaths();
    for (const char* parent : {"A", "B"})
        EXPECT_EQ(treeaccess::CountObservers(m_tree.FindNode(PathOf(parent))), 0);
}

class StatusListCrowd : public StatusListTest {
  protected:
    static constexpr int Count = 10000;

    void AddCrowd(int count) {
        for (int i = 0; i < count; ++i)
            m_tree.ProvideNode(s_path + QStringLiteral("/N%1/Status").arg(i));
    }
};

TEST_F(StatusListCrowd, ComesChangesAndGoesOneByOne) {
    QTableView view;
    view.setModel(&m_model);
    view.show();
    m_tree.ProvideNode(s_path);
    m_model.addMpxORVs_ValuePath(s_path);
    AddCrowd(Count);
    ASSERT_EQ(m_model.rowCount(), Count);
    for (int i = 0; i < Count; ++i)
        treeaccess::ValueAt<values::Value<QString>>(s_path + QStringLiteral("/N%1/Status/Comment").arg(i))
            ->SetValue(QString::number(i));
    EXPECT_EQ(TextAt(Count - 1, 3), QString::number(Count - 1));
    m_tree.Delete(m_tree.FindItem(s_path));
    EXPECT_EQ(m_model.rowCount(), 0);
}

}  // namespace
