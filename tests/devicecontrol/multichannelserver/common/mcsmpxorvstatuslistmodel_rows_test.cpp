// SPDX-License-Identifier: Apache-2.0
#include <tests/devicecontrol/multichannelserver/common/statuslisttest.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/waituntil.h>

#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>

namespace {

/// Rows that come, change and go, told as signals.
class StatusListRows : public StatusListTest {
  protected:
    /// The first and the last row of each signal.
    static std::vector<std::pair<int, int>> Rows(const QSignalSpy& spy) {
        std::vector<std::pair<int, int>> rows;
        for (const QList<QVariant>& signal : spy)
            rows.emplace_back(signal[1].toInt(), signal[2].toInt());
        return rows;
    }
    using Ranges = std::vector<std::pair<int, int>>;

    void AddThree() {
        for (const char* name : {"Alpha", "Bravo", "Charlie"})
            Add(name);
        m_model.addMpxORVs_ValuePath(s_path);
    }

    QAbstractItemModelTester m_tester{&m_model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QSignalSpy m_inserted{&m_model, &QAbstractItemModel::rowsInserted};
    QSignalSpy m_removed{&m_model, &QAbstractItemModel::rowsRemoved};
    QSignalSpy m_changed{&m_model, &QAbstractItemModel::dataChanged};
};

TEST_F(StatusListRows, ThoseThatAreThereComeAtOnce) {
    AddThree();
    EXPECT_EQ(Rows(m_inserted), (Ranges{{0, 2}}));
}

TEST_F(StatusListRows, ASubtreeThatComesWholeIsOneRow) {
    AddThree();
    auto built = std::make_unique<values::Node>(QStringLiteral("Delta"));
    std::unique_ptr<values::TreeItem> status = std::make_unique<values::Node>(QStringLiteral("Status"));
    built->AddChild(status);
    std::unique_ptr<values::TreeItem> item = std::move(built);
    m_tree.AddItem(s_path, item);
    EXPECT_EQ(Rows(m_inserted), (Ranges{{0, 2}, {3, 3}}));
    EXPECT_NE(m_tree.FindItem(PathOf("Delta/Status/OperationMode")), nullptr);
}

TEST_F(StatusListRows, AChangeRedrawsTheWholeRowAndNoOther) {
    AddThree();
    const auto status = StatusOf("Bravo");
    status->SetComment(QStringLiteral("changed"));
    ASSERT_EQ(m_changed.count(), 1);
    EXPECT_EQ(m_changed[0][0].toModelIndex(), m_model.index(1, 0));
    EXPECT_EQ(m_changed[0][1].toModelIndex(), m_model.index(1, 3));
    EXPECT_TRUE(m_changed[0][2].value<QVector<int>>().isEmpty());
    EXPECT_EQ(TextAt(1, 3), QStringLiteral("changed"));
    status->GetIsMasterValue()->SetValue(true);
    status->GetIsWatchingMasterValue()->SetValue(true);
    status->GetOperationModeValue()->Select(3);
    status->SetOperationType(QStringLiteral("x"));
    EXPECT_EQ(m_changed.count(), 5);
    status->AddConnectedClient(1, QStringLiteral("A"));
    EXPECT_EQ(m_changed.count(), 7);  // it comes, and is then the current one
}

TEST_F(StatusListRows, ARowThatGoesTakesNoOtherWithIt) {
    AddThree();
    Remove("Bravo");
    EXPECT_EQ(Rows(m_removed), (Ranges{{1, 1}}));
    EXPECT_EQ(Names(), (QStringList{QStringLiteral("Alpha"), QStringLiteral("Charlie")}));
    StatusOf("Charlie")->SetComment(QStringLiteral("changed"));
    ASSERT_EQ(m_changed.count(), 1);
    EXPECT_EQ(m_changed[0][0].toModelIndex().row(), 1);
}

TEST_F(StatusListRows, AWatchedNodeThatGoesTakesItsRowsOneByOneAndIsWatchedNoMore) {
    Add("Static/S1");
    for (const char* name : {"Dynamic/D1", "Dynamic/D2"})
        Add(name);
    m_model.addMpxORVs_ValuePath(PathOf("Dynamic"));
    m_model.addMpxORVs_ValuePath(PathOf("Static"));
    Remove("Dynamic");
    EXPECT_EQ(Rows(m_removed), (Ranges{{0, 0}, {0, 0}}));
    EXPECT_EQ(Names(), QStringList{QStringLiteral("S1")});
    Add("Dynamic/D3");
    EXPECT_EQ(m_model.rowCount(), 1);
    Add("Static/S2");
    EXPECT_EQ(m_model.rowCount(), 2);
    EXPECT_TRUE(m_model.addMpxORVs_ValuePath(PathOf("Dynamic")));
    EXPECT_EQ(m_model.rowCount(), 3);
}

TEST_F(StatusListRows, RemovingAllRemovesThemTogetherAndWatchesNothing) {
    AddThree();
    m_model.removeAllMpxORVs_ValuePaths();
    EXPECT_EQ(Rows(m_removed), (Ranges{{0, 2}}));
    EXPECT_EQ(m_model.rowCount(), 0);
    for (const char* path : {"/Mpx", "/Mpx/Alpha", "/Mpx/Alpha/Status", "/Mpx/Alpha/Status/Comment"})
        EXPECT_EQ(CountObserversAt(QString::fromLatin1(path)), 0) << path;
    Add("Delta");
    EXPECT_EQ(m_model.rowCount(), 0);
    EXPECT_TRUE(m_model.addMpxORVs_ValuePath(s_path));
    EXPECT_EQ(m_model.rowCount(), 4);
}

TEST_F(StatusListRows, RemovingAllWithoutRowsStopsWatching) {
    m_tree.ProvideNode(s_path);
    m_model.addMpxORVs_ValuePath(s_path);
    m_model.removeAllMpxORVs_ValuePaths();
    EXPECT_EQ(m_removed.count(), 0);
    EXPECT_EQ(CountObserversAt(s_path), 0);
    m_model.removeAllMpxORVs_ValuePaths();
}

TEST_F(StatusListRows, ADestroyedModelLeavesNoObservers) {
    Add("Alpha");
    auto model = std::make_unique<MCSMpxORVStatusListModel>();
    model->addMpxORVs_ValuePath(s_path);
    EXPECT_EQ(CountObserversAt(s_path), 1);
    EXPECT_EQ(CountObserversAt(PathOf("Alpha")), 1);
    model.reset();
    for (const char* path : {"/Mpx", "/Mpx/Alpha", "/Mpx/Alpha/Status", "/Mpx/Alpha/Status/IsMaster"})
        EXPECT_EQ(CountObserversAt(QString::fromLatin1(path)), 0) << path;
}

TEST_F(StatusListRows, ANodeMayBeARowAndBeWatched) {
    Add("Group/G1");
    EXPECT_TRUE(m_model.addMpxORVs_ValuePath(s_path));
    EXPECT_TRUE(m_model.addMpxORVs_ValuePath(PathOf("Group")));
    EXPECT_EQ(Names(),
              (QStringList{QStringLiteral("Group"), QStringLiteral("G1"), QStringLiteral("Status")}));
    Remove("Group");
    EXPECT_EQ(m_model.rowCount(), 0);
    Add("Alpha");
    EXPECT_EQ(Names(), QStringList{QStringLiteral("Alpha")});
}

TEST_F(StatusListRows, AWatchedRowWhoseParentGoesIsWatchedUntilItGoesToo) {
    Add("Group/G1");
    m_model.addMpxORVs_ValuePath(s_path);
    m_model.addMpxORVs_ValuePath(PathOf("Group"));
    m_tree.Delete(m_tree.FindItem(s_path));
    EXPECT_EQ(m_model.rowCount(), 0);
    m_tree.ProvideNode(s_path);
    m_model.removeAllMpxORVs_ValuePaths();
}

TEST_F(StatusListRows, WithoutACompleteStatusAreEmpty) {
    const auto status = Add("Alpha");
    status->SetComment(QStringLiteral("x"));
    m_model.addMpxORVs_ValuePath(s_path);
    treeaccess::DeleteAt(PathOf("Alpha/Status/OperationMode"));
    for (int column = 0; column < 4; ++column) {
        EXPECT_FALSE(At(0, column).isValid()) << column;
        EXPECT_FALSE(At(0, column, Qt::DecorationRole).isValid()) << column;
    }
}

TEST_F(StatusListRows, SurviveTheLossOfAnyValue) {
    for (const char* key : {"OperationType", "ConnectedClients", "IsMaster", "IsWatchingMaster", "Comment"}) {
        const auto status = Add(key);
        status->SetComment(QStringLiteral("x"));
        status->GetOperationModeValue()->Select(3);
    }
    m_model.addMpxORVs_ValuePath(s_path);
    for (int row = 0; row < 5; ++row) {
        treeaccess::DeleteAt(s_path + QLatin1Char('/') + TextAt(row, 0) + QStringLiteral("/Status/") +
                             TextAt(row, 0));
        for (int column = 0; column < 4; ++column)
            EXPECT_TRUE(At(row, column).isValid()) << row << "," << column;
        EXPECT_TRUE(At(row, 0, Qt::DecorationRole).isValid());
    }
    EXPECT_EQ(TextAt(4, 3), QString());
}

TEST_F(StatusListRows, AreEmptyWhereAValueHasThePlaceOfTheStatus) {
    treeaccess::PutValue<values::Value<int>>(PathOf("Odd"), "Status");
    m_model.addMpxORVs_ValuePath(s_path);
    ASSERT_EQ(m_model.rowCount(), 1);
    EXPECT_FALSE(At(0, 0).isValid());
    Remove("Odd");
    EXPECT_EQ(m_model.rowCount(), 0);
}

TEST_F(StatusListRows, AreRedrawnWhenTheirStatusGoesAndComesBack) {
    AddThree();
    StatusOf("Bravo")->SetComment(QStringLiteral("before"));
    m_changed.clear();
    treeaccess::DeleteAt(PathOf("Bravo/Status"));
    EXPECT_GE(m_changed.count(), 1);
    EXPECT_FALSE(At(1, 3).isValid());
    m_changed.clear();
    StatusOf("Bravo")->SetComment(QStringLiteral("after"));
    EXPECT_GE(m_changed.count(), 2);
    EXPECT_EQ(TextAt(1, 3), QStringLiteral("after"));
    EXPECT_EQ(TextAt(1, 0), QStringLiteral("Bravo"));
}

TEST_F(StatusListRows, WhoHearsOfAChangeMayRemoveTheRow) {
    AddThree();
    const auto status = StatusOf("Bravo");
    QObject::connect(&m_model, &QAbstractItemModel::dataChanged, &m_model, [this] {
        if (m_tree.FindItem(PathOf("Bravo")) != nullptr) Remove("Bravo");
    });
    status->GetOperationModeValue()->Select(3);
    EXPECT_EQ(Names(), (QStringList{QStringLiteral("Alpha"), QStringLiteral("Charlie")}));
    RunTurns(2);
    StatusOf("Charlie")->SetComment(QStringLiteral("still told"));
    EXPECT_EQ(TextAt(1, 3), QStringLiteral("still told"));
}

TEST_F(StatusListRows, WhoHearsOfAChangeMayRemoveAll) {
    AddThree();
    values::ValueSelection* const clients = StatusOf("Alpha")->GetConnectedClientsValue();
    QObject::connect(&m_model, &QAbstractItemModel::dataChanged, &m_model,
                     [this] { m_model.removeAllMpxORVs_ValuePaths(); });
    clients->AddItem(QStringLiteral("A"), 0.0, 1);
    EXPECT_EQ(m_model.rowCount(), 0);
    RunTurns(2);
    EXPECT_EQ(clients->CountObservers(), 0);
}

TEST_F(StatusListRows, AStatusThatIsToldOfIsDestroyedOnlyAfterwards) {
    AddThree();
    values::ValueSelection* const mode = StatusOf("Bravo")->GetOperationModeValue();
    int observers = 0;
    QObject::connect(&m_model, &QAbstractItemModel::dataChanged, &m_model, [&] {
        m_model.removeAllMpxORVs_ValuePaths();
        RunTurns(3);  // as a dialog would
        observers = mode->CountObservers();
    });
    mode->Select(3);
    EXPECT_EQ(observers, 1);
    RunTurns(2);
    EXPECT_EQ(mode->CountObservers(), 0);
}

// What the status provides after that makes the MpxORV anew.
TEST_F(StatusListRows, WhoHearsOfANewStatusMayDeleteItsMpxORV) {
    m_tree.ProvideNode(s_path);
    m_model.addMpxORVs_ValuePath(s_path);
    bool isDeleted = false;
    RecordingObserver meddler([&](Observable*, TChangeCode code) {
        if (code != changecode::StructureChanged || isDeleted) return;
        isDeleted = m_tree.FindItem(PathOf("Alpha/Status/IsMaster")) != nullptr;
        if (isDeleted) Remove("Alpha");
    });
    m_tree.GetRoot()->AddObserver(&meddler);
    m_tree.ProvideNode(PathOf("Alpha"));
    m_tree.GetRoot()->DeleteObserver(&meddler);
    EXPECT_TRUE(isDeleted);
    EXPECT_EQ(Names(), QStringList{QStringLiteral("Alpha")});
    Remove("Alpha");
    EXPECT_EQ(m_model.rowCount(), 0);
}

TEST_F(StatusListRows, WhoHearsOfANewStatusMayAddAnother) {
    m_tree.ProvideNode(s_path);
    m_model.addMpxORVs_ValuePath(s_path);
    RecordingObserver meddler([this](Observable*, TChangeCode code) {
        if (code == changecode::StructureChanged && m_tree.FindItem(PathOf("Alpha/Status")) != nullptr)
            m_tree.ProvideNode(PathOf("Bravo"));
    });
    m_tree.GetRoot()->AddObserver(&meddler);
    m_tree.ProvideNode(PathOf("Alpha"));
    m_tree.GetRoot()->DeleteObserver(&meddler);
    EXPECT_EQ(Names(), (QStringList{QStringLiteral("Alpha"), QStringLiteral("Bravo")}));
}

TEST_F(StatusListRows, WhoHearsOfANewStatusMayRemoveAll) {
    m_tree.ProvideNode(s_path);
    m_model.addMpxORVs_ValuePath(s_path);
    bool isRemoved = false;
    RecordingObserver meddler([&](Observable*, TChangeCode code) {
        if (code != changecode::StructureChanged || isRemoved) return;
        isRemoved = m_tree.FindItem(PathOf("Alpha/Status")) != nullptr;
        if (isRemoved) m_model.removeAllMpxORVs_ValuePaths();
    });
    m_tree.GetRoot()->AddObserver(&meddler);
    m_tree.ProvideNode(PathOf("Alpha"));
    m_tree.GetRoot()->DeleteObserver(&meddler);
    EXPECT_EQ(m_model.rowCount(), 0);
    EXPECT_EQ(CountObserversAt(PathOf("Alpha")), 0);
    EXPECT_TRUE(m_model.addMpxORVs_ValuePath(s_path));
    EXPECT_EQ(m_model.rowCount(), 1);
}

TEST(StatusListOfATree, GoesWithIt) {
    auto tree = std::make_unique<values::Tree>();
    MCSMpxORVStatusListModel model;
    tree->ProvideNode(QStringLiteral("/Mpx/Alpha"));
    EXPECT_TRUE(model.addMpxORVs_ValuePath(QStringLiteral("/Mpx")));
    EXPECT_EQ(model.rowCount(), 1);
    tree.reset();
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_FALSE(model.addMpxORVs_ValuePath(QStringLiteral("/Mpx")));
}

}  // namespace
