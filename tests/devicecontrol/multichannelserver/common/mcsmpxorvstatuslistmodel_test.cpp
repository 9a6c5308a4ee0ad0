// SPDX-License-Identifier: Apache-2.0
#include <tests/devicecontrol/multichannelserver/common/statuslisttest.h>

#include <QtGui/QImage>

#include <ostream>

namespace {

TEST_F(StatusListTest, StartsEmptyWithFourColumns) {
    EXPECT_EQ(m_model.rowCount(), 0);
    EXPECT_EQ(m_model.columnCount(), 4);
    EXPECT_STREQ(m_model.metaObject()->className(), "MCSMpxORVStatusListModel");
    EXPECT_EQ(m_model.metaObject()->methodCount(), QAbstractTableModel::staticMetaObject.methodCount());
}

TEST_F(StatusListTest, NamesItsColumns) {
    const QStringList names = {QStringLiteral("Name"), QStringLiteral("Operation Mode"),
                               QStringLiteral("Clients"), QStringLiteral("Comment")};
    for (int column = 0; column < 4; ++column)
        EXPECT_EQ(m_model.headerData(column, Qt::Horizontal).toString(), names[column]);
}

TEST_F(StatusListTest, NothingElseOfTheHeadersIsItsOwn) {
    Add("Alpha");
    m_model.addMpxORVs_ValuePath(s_path);
    EXPECT_FALSE(m_model.headerData(4, Qt::Horizontal).isValid());
    EXPECT_FALSE(m_model.headerData(-1, Qt::Horizontal).isValid());
    EXPECT_FALSE(m_model.headerData(0, Qt::Vertical).isValid());
    EXPECT_FALSE(m_model.headerData(0, Qt::Horizontal, Qt::ToolTipRole).isValid());
    EXPECT_FALSE(m_model.headerData(0, Qt::Horizontal, Qt::DecorationRole).isValid());
}

TEST_F(StatusListTest, HasARowForEachMpxORVThatIsThere) {
    for (const char* name : {"Charlie", "Alpha", "Bravo"})
        Add(name);
    treeaccess::PutValue<values::Value<int>>(s_path, "NotANode");
    EXPECT_TRUE(m_model.addMpxORVs_ValuePath(s_path));
    EXPECT_EQ(Names(),
              (QStringList{QStringLiteral("Charlie"), QStringLiteral("Alpha"), QStringLiteral("Bravo")}));
}

TEST_F(StatusListTest, ShowsAnMpxORVThatComesLaterAsTheLastRow) {
    for (const char* name : {"Charlie", "Alpha", "Bravo"})
        Add(name);
    m_model.addMpxORVs_ValuePath(s_path);
    Add("Aardvark");
    ASSERT_EQ(m_model.rowCount(), 4);
    EXPECT_EQ(TextAt(3, 0), QStringLiteral("Aardvark"));
}

TEST_F(StatusListTest, AddsNothingForAPathWithoutANode) {
    EXPECT_FALSE(m_model.addMpxORVs_ValuePath(s_path));
    treeaccess::PutValue<values::Value<int>>(s_path, "Value");
    EXPECT_FALSE(m_model.addMpxORVs_ValuePath(s_path + QStringLiteral("/Value")));
    EXPECT_EQ(m_tree.FindNode(QStringLiteral("/Mpx/Nothing")), nullptr);
}

TEST_F(StatusListTest, AnEmptyPathIsNoNode) {
    m_tree.ProvideNode(QStringLiteral("/Alpha"));
    EXPECT_FALSE(m_model.addMpxORVs_ValuePath(QString()));
    m_tree.ProvideNode(QStringLiteral("/Bravo"));
    EXPECT_EQ(m_model.rowCount(), 0);
    EXPECT_EQ(m_tree.GetRoot()->CountObservers(), 0);
    EXPECT_EQ(m_tree.FindNode(QStringLiteral("/Alpha"))->CountChildren(), 0);
    EXPECT_EQ(m_tree.FindNode(QStringLiteral("/Bravo"))->CountChildren(), 0);
}

TEST_F(StatusListTest, NoCellHoldsRows) {
    Add("Alpha");
    m_model.addMpxORVs_ValuePath(s_path);
    EXPECT_EQ(m_model.rowCount(QModelIndex()), 1);
    for (int column = 0; column < 4; ++column) {
        EXPECT_EQ(m_model.rowCount(m_model.index(0, column)), 0);
    }
    EXPECT_EQ(m_model.columnCount(m_model.index(0, 0)), 4);
}

TEST_F(StatusListTest, CanBeBoundOnceTheSubtreeIsThere) {
    EXPECT_FALSE(m_model.addMpxORVs_ValuePath(s_path));
    Add("Alpha");
    EXPECT_EQ(m_model.rowCount(), 0);
    EXPECT_TRUE(m_model.addMpxORVs_ValuePath(s_path));
    EXPECT_EQ(m_model.rowCount(), 1);
}

TEST_F(StatusListTest, ThePathTwiceIsOnce) {
    Add("Alpha");
    EXPECT_TRUE(m_model.addMpxORVs_ValuePath(s_path));
    EXPECT_TRUE(m_model.addMpxORVs_ValuePath(s_path));
    EXPECT_TRUE(m_model.addMpxORVs_ValuePath(QStringLiteral("//Mpx/")));
    EXPECT_EQ(m_model.rowCount(), 1);
    Add("Bravo");
    EXPECT_EQ(m_model.rowCount(), 2);
}

TEST_F(StatusListTest, WatchesSeveralNodesInTheOrderOfTheirComing) {
    Add("Static/S1");
    Add("Dynamic/D1");
    EXPECT_TRUE(m_model.addMpxORVs_ValuePath(PathOf("Dynamic")));
    EXPECT_TRUE(m_model.addMpxORVs_ValuePath(PathOf("Static")));
    Add("Dynamic/D2");
    Add("Static/S2");
    EXPECT_EQ(Names(), (QStringList{QStringLiteral("D1"), QStringLiteral("S1"), QStringLiteral("D2"),
                                    QStringLiteral("S2")}));
}

TEST_F(StatusListTest, ShowsWhatTheStatusSays) {
    const auto status = Add("Alpha");
    status->SetOperationType(QStringLiteral("Wideband"));
    status->GetOperationModeValue()->Select(4);
    status->SetComment(QStringLiteral("on the roof"));
    m_model.addMpxORVs_ValuePath(s_path);
    const QStringList texts = {QStringLiteral("Alpha"), QStringLiteral("Wideband"), QString(),
                               QStringLiteral("on the roof")};
    for (int column = 0; column < 4; ++column) {
        EXPECT_EQ(TextAt(0, column), texts[column]);
        EXPECT_EQ(At(0, column, Qt::ToolTipRole), At(0, column)) << column;
    }
}

TEST_F(StatusListTest, JoinsTheClientsByCommaAndBlank) {
    const auto status = Add("Alpha");
    m_model.addMpxORVs_ValuePath(s_path);
    EXPECT_TRUE(At(0, 2).isValid());
    EXPECT_EQ(TextAt(0, 2), QString());
    status->AddConnectedClient(1, QStringLiteral("A"));
    EXPECT_EQ(TextAt(0, 2), QStringLiteral("A"));
    status->AddConnectedClient(2, QStringLiteral("B"));
    EXPECT_EQ(TextAt(0, 2), QStringLiteral("A, B"));
    status->RemoveConnectedClient(1);
    EXPECT_EQ(TextAt(0, 2), QStringLiteral("B"));
}

TEST_F(StatusListTest, HasNothingForOtherRolesAndPlaces) {
    Add("Alpha");
    m_model.addMpxORVs_ValuePath(s_path);
    for (const int role :
         {int(Qt::EditRole), int(Qt::StatusTipRole), int(Qt::TextAlignmentRole), int(Qt::UserRole)})
        EXPECT_FALSE(At(0, 0, role).isValid()) << role;
    EXPECT_FALSE(m_model.data(QModelIndex(), Qt::DisplayRole).isValid());
    EXPECT_FALSE(m_model.index(0, 4).isValid());
    EXPECT_FALSE(m_model.data(m_model.index(0, 0).siblingAtColumn(7), Qt::DisplayRole).isValid());
}

TEST_F(StatusListTest, AnIndexThatLostItsRowGivesNothing) {
    Add("Alpha");
    m_model.addMpxORVs_ValuePath(s_path);
    const QModelIndex kept = m_model.index(0, 0);
    Remove("Alpha");
    EXPECT_FALSE(m_model.data(kept, Qt::DisplayRole).isValid());
}

struct LampRow {
    const char* name;
    int mode;  ///< a key, or none
    bool isMaster;
    const char* border;
    const char* fill;
};
void PrintTo(const LampRow& row, std::ostream* stream) {
    *stream << row.name;
}

class StatusListLamp : public StatusListTest, public testing::WithParamInterface<LampRow> {};

TEST_P(StatusListLamp, IsDrawnInItsColours) {
    const LampRow& row = GetParam();
    const auto status = Add("Alpha");
    if (row.mode >= 0) status->GetOperationModeValue()->Select(row.mode);
    status->GetIsMasterValue()->SetValue(row.isMaster);
    m_model.addMpxORVs_ValuePath(s_path);
    const QVariant lamp = At(0, 0, Qt::DecorationRole);
    ASSERT_EQ(lamp.userType(), int(QMetaType::QPixmap));
    const QImage image = lamp.value<QPixmap>().toImage();
    ASSERT_EQ(image.size(), QSize(10, 10));
    const char* const drawing[] = {"   ....   ", "  .++++.  ", " .++++++. ", ".++@@++++.", ".++@.++++.",
                                   ".++++++++.", ".++++++++.", " .++++++. ", "  .++++.  ", "   ....   "};
    for (int y = 0; y < 10; ++y) {
        for (int x = 0; x < 10; ++x) {
            const char drawn = drawing[y][x];
            const QColor colour = image.pixelColor(x, y);
            if (drawn == ' ')
                EXPECT_EQ(colour.alpha(), 0) << x << "," << y;
            else
                EXPECT_EQ(colour.name().toUpper().toStdString(), drawn == '.'   ? row.border
                                                                 : drawn == '+' ? row.fill
                                                                                : "#FFFFFF")
                    << x << "," << y;
        }
    }
    for (int column = 1; column < 4; ++column)
        EXPECT_FALSE(At(0, column, Qt::DecorationRole).isValid()) << column;
}

INSTANTIATE_TEST_SUITE_P(Lamps, StatusListLamp,
                         testing::Values(LampRow{"Idle", 0, false, "#70BA70", "#007C00"},
                                         LampRow{"IdleMaster", 0, true, "#70BA70", "#007C00"},
                                         LampRow{"Working", 4, false, "#90EE90", "#00CD00"},
                                         LampRow{"Master", 1, true, "#8ECAED", "#0096ED"},
                                         LampRow{"WithoutAMode", -1, false, "#90EE90", "#00CD00"}),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
