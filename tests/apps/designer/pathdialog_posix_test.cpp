// SPDX-License-Identifier: Apache-2.0
#include <apps/designer/paths/pathdialog.h>

#include <apps/designer/boundwidget.h>
#include <apps/designer/content.h>
#include <apps/designer/paths/pathmodel.h>

#include <platform/values/tree.h>
#include <platform/vtclient/vttokenhash.h>

#include <tests/apps/mcserver/serverprocess.h>
#include <tests/support/printing.h>
#include <tests/support/waituntil.h>

#include <gtest/gtest.h>

#include <QtCore/QAbstractItemModel>
#include <QtNetwork/QTcpServer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeView>

namespace {

QString S(const char* text) {
    return QString::fromUtf8(text);
}

const BoundWidget& Kind(const char* className) {
    for (const BoundWidget& widget : BoundWidget::All())
        if (qstrcmp(widget.className, className) == 0) return widget;
    qFatal("there is no %s", className);
}

/// The dialog as people see it who lay out a form.
class PathDialogTest : public testing::Test {
  protected:
    void Open(const char* className, const char* path = "") {
        dialog = std::make_unique<PathDialog>(Kind(className), S(path), nullptr);
        dialog->show();
    }
    QLineEdit* Field(const char* name) const { return dialog->findChild<QLineEdit*>(S(name)); }
    QString Label(const char* name) const { return dialog->findChild<QLabel*>(S(name))->text(); }
    void ConnectTo(const QString& address) const {
        Field("ServerAddress")->setText(address);
        QTest::mouseClick(dialog->findChild<QPushButton*>(S("Connect")), Qt::LeftButton);
    }
    void ConnectToServer() {
        ASSERT_NO_FATAL_FAILURE(server.Start());
        ConnectTo(S("127.0.0.1:%1").arg(server.Port()));
        ASSERT_TRUE(WaitFor(PathSession::EState::Ready)) << Label("Status").toStdString();
    }
    bool WaitFor(PathSession::EState state) const {
        return WaitUntil([&] { return dialog->GetSession().GetState() == state; }, 30000);
    }
    QTreeView* View() const { return dialog->findChild<QTreeView*>(S("Tree")); }
    QPushButton* Ok() const { return dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok); }
    /// The row that ends with these names; invalid if it is not shown.
    QModelIndex Row(const char* path) const {
        QModelIndex found;
        for (const QString& name : S(path).split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
            const QAbstractItemModel& model = *View()->model();
            QModelIndex child;
            for (int row = 0; row < model.rowCount(found) && !child.isValid(); ++row)
                if (model.index(row, 0, found).data().toString() == name) child = model.index(row, 0, found);
            if (!child.isValid()) return QModelIndex();
            found = child;
        }
        return found;
    }
    QString Cell(const char* path, int column) const {
        const QModelIndex row = Row(path);
        return row.sibling(row.row(), column).data().toString();
    }

    ServerProcess server;
    std::unique_ptr<PathDialog> dialog;
};

constexpr const char* BootState = "/MultiChannelServer/Status/BootState";

TEST_F(PathDialogTest, ShowsTheTreeOfAServerWithTypesAndContents) {
    Open("VCLabel");
    EXPECT_FALSE(View()->isEnabled());
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    EXPECT_TRUE(Row("/MultiChannelServer/Status").isValid());
    EXPECT_EQ(Cell("/MultiChannelServer/Status", PathModel::TypeColumn), S("node"));
    EXPECT_EQ(Cell(BootState, PathModel::TypeColumn), S("selection"));
    EXPECT_TRUE(WaitUntil([&] { return Cell(BootState, PathModel::ContentColumn) == S("Ready"); }));
    EXPECT_EQ(Cell("/MultiChannelServer/Command/ShallBeConnected", PathModel::TypeColumn), S("boolean"));
}

TEST_F(PathDialogTest, ConnectsByEnterWhereTheServerIsEntered) {
    Open("VCLabel");
    QApplication::setActiveWindow(dialog.get());
    ASSERT_NO_FATAL_FAILURE(server.Start());
    Field("ServerAddress")->setText(S("127.0.0.1:%1").arg(server.Port()));
    Field("ServerAddress")->setFocus();
    QTest::keyClick(Field("ServerAddress"), Qt::Key_Return);
    ASSERT_TRUE(WaitFor(PathSession::EState::Ready)) << Label("Status").toStdString();
    EXPECT_TRUE(dialog->isVisible());
    Field("Path")->setFocus();
    Field("Path")->setText(S(BootState));
    QTest::keyClick(Field("Path"), Qt::Key_Return);
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
}

TEST_F(PathDialogTest, TakesTheRowThatIsChosen) {
    Open("VCComboBoxClassic");
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    View()->setCurrentIndex(Row(BootState));
    EXPECT_EQ(Field("Path")->text(), S(BootState));
    EXPECT_TRUE(Ok()->isEnabled());
    QTest::mouseClick(Ok(), Qt::LeftButton);
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_EQ(dialog->GetPath(), S(BootState));
    EXPECT_EQ(dialog->GetContent(), content::Selection);
}

TEST_F(PathDialogTest, RefusesWhatTheWidgetDoesNotShow) {
    Open("VCCheckBox");
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    View()->setCurrentIndex(Row(BootState));
    EXPECT_FALSE(Ok()->isEnabled());
    EXPECT_EQ(Label("Problem"), S("A VCCheckBox shows booleans; the server has a selection there."));
    View()->setCurrentIndex(Row("/MultiChannelServer/Command/ShallBeConnected"));
    EXPECT_TRUE(Ok()->isEnabled());
    EXPECT_EQ(Label("Problem"), QString());
}

TEST_F(PathDialogTest, TakesAPathThatMayComeLater) {
    Open("VCCheckBox");
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    Field("Path")->setText(S("/MultiChannelServer/DynamicMpxORVs/Mine/Request/Frequency"));
    EXPECT_TRUE(Ok()->isEnabled());
    EXPECT_EQ(Label("Problem"), S("The server has nothing there now; the widget waits for it."));
    Field("Path")->setText(S("Mine"));
    EXPECT_FALSE(Ok()->isEnabled());
    EXPECT_EQ(Label("Problem"), S("A path begins with \"/\"."));
}

TEST_F(PathDialogTest, BeginsAtThePathThatTheWidgetHas) {
    Open("VCComboBoxClassic", BootState);
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    EXPECT_EQ(View()->currentIndex().data(PathModel::PathRole).toString(), S(BootState));
}

TEST_F(PathDialogTest, FiltersByAPartOfThePath) {
    Open("VCLabel");
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    QTest::keyClicks(Field("Filter"), S("bootstate"));
    EXPECT_TRUE(Row(BootState).isValid());
    EXPECT_TRUE(View()->isExpanded(Row("/MultiChannelServer/Status")));
    EXPECT_FALSE(Row("/MultiChannelServer/Status/Online").isValid());
    Field("Filter")->clear();
    EXPECT_TRUE(Row("/MultiChannelServer/Status/Online").isValid());
}

TEST_F(PathDialogTest, TellsThatTheServerIsLostAndThatItIsBack) {
    Open("VCLabel");
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    server.Kill();
    ASSERT_TRUE(WaitFor(PathSession::EState::Lost));
    EXPECT_TRUE(Label("Status").contains(S("is lost"))) << Label("Status").toStdString();
    EXPECT_TRUE(Row(BootState).isValid());
    ASSERT_NO_FATAL_FAILURE(server.Restart());
    EXPECT_TRUE(WaitFor(PathSession::EState::Ready));
    EXPECT_TRUE(Row(BootState).isValid());
}

TEST_F(PathDialogTest, SaysWhereNobodyAnswers) {
    QTcpServer nobody;
    ASSERT_TRUE(nobody.listen(QHostAddress::LocalHost));
    const QString address = S("127.0.0.1:%1").arg(nobody.serverPort());
    nobody.close();
    Open("VCLabel");
    ConnectTo(address);
    ASSERT_TRUE(WaitFor(PathSession::EState::Failed));
    EXPECT_TRUE(Label("Status").startsWith(S("No connection to %1: ").arg(address)))
        << Label("Status").toStdString();
    EXPECT_TRUE(Label("Status").contains(S("refused"))) << Label("Status").toStdString();
    EXPECT_FALSE(View()->isEnabled());
    EXPECT_TRUE(Ok()->isEnabled());  // a path can be typed
}

TEST_F(PathDialogTest, SaysThatSomebodyDoesNotAnswerInTime) {
    QTcpServer silent;
    ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
    Open("VCLabel");
    ConnectTo(S("127.0.0.1:%1").arg(silent.serverPort()));
    EXPECT_EQ(dialog->GetSession().GetState(), PathSession::EState::Connecting);
    ASSERT_TRUE(WaitFor(PathSession::EState::Failed));
    EXPECT_TRUE(Label("Status").startsWith(S("No connection to "))) << Label("Status").toStdString();
}

TEST_F(PathDialogTest, SaysWhatIsNoAddress) {
    Open("VCLabel");
    for (const char* const address : {"", "tower:port", "[::1", "tower:0"}) {
        ConnectTo(S(address));
        EXPECT_TRUE(Label("Status").startsWith(S("That is no server: "))) << address;
        EXPECT_EQ(dialog->GetSession().GetState(), PathSession::EState::Idle);
    }
}

TEST_F(PathDialogTest, SaysThatTheTokenIsNotTheRightOne) {
    Open("VCLabel");
    server.WriteFile(S("access"), "allow viewer read /MultiChannelServer/Status\n");
    ASSERT_NO_FATAL_FAILURE(server.Start({S("--access"), server.Path(S("access"))}));
    Field("User")->setText(S("mallory"));
    Field("Token")->setText(S("guessed"));
    ConnectTo(S("127.0.0.1:%1").arg(server.Port()));
    ASSERT_TRUE(WaitFor(PathSession::EState::Failed));
    EXPECT_TRUE(Label("Status").contains(S("user or token is wrong"))) << Label("Status").toStdString();
    EXPECT_FALSE(Label("Status").contains(S("guessed")));
    EXPECT_EQ(VtClientCenter::Instance().GetOptions().token, QString());
}

TEST_F(PathDialogTest, ShowsWhatTheUserMayRead) {
    Open("VCLabel");
    server.WriteFile(S("access"), "allow viewer read /MultiChannelServer/Status\nuser eve viewer " +
                                      VtTokenHash::Of(S("secret")).ToText().toUtf8() + '\n');
    ASSERT_NO_FATAL_FAILURE(server.Start({S("--access"), server.Path(S("access"))}));
    Field("User")->setText(S("eve"));
    Field("Token")->setText(S("secret"));
    ConnectTo(S("127.0.0.1:%1").arg(server.Port()));
    ASSERT_TRUE(WaitFor(PathSession::EState::Ready)) << Label("Status").toStdString();
    EXPECT_TRUE(Row(BootState).isValid());
    EXPECT_FALSE(Row("/MultiChannelServer/Config").isValid());
}

TEST_F(PathDialogTest, ClosingItWhileItConnectsLeavesNothing) {
    QTcpServer silent;
    ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
    Open("VCLabel");
    ConnectTo(S("127.0.0.1:%1").arg(silent.serverPort()));
    EXPECT_NE(values::Tree::Instance(), nullptr);
    dialog.reset();
    EXPECT_EQ(values::Tree::Instance(), nullptr);
}

TEST_F(PathDialogTest, LooksAtAServerInAPlaceOfItsOwn) {
    values::Tree tree;
    Open("VCLabel");
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    EXPECT_EQ(tree.FindItem(S("/MultiChannelServer")), nullptr);
    dialog.reset();
    EXPECT_EQ(tree.GetRoot()->CountChildren(), 0);
}

TEST(PathModel, KeepsWhatStaysAndShowsWhatCame) {
    values::Tree tree;
    tree.ProvideNode(S("/top/a/b"));
    tree.ProvideNode(S("/top/c"));
    const auto same = [](const QString& path) { return path; };
    PathModel model(same, same, nullptr);
    model.Follow(tree.FindNode(S("/top")));
    const QPersistentModelIndex kept = model.IndexOf(S("/c"));
    ASSERT_TRUE(kept.isValid());
    tree.Delete(tree.FindItem(S("/top/a")));
    tree.ProvideNode(S("/top/d"));
    model.Follow(tree.FindNode(S("/top")));
    EXPECT_TRUE(kept.isValid());
    EXPECT_FALSE(model.IndexOf(S("/a")).isValid());
    EXPECT_TRUE(model.IndexOf(S("/d")).isValid());
    model.Follow(nullptr);
    EXPECT_EQ(model.rowCount(), 0);
}

TEST(PathModel, ShowsNoMoreThanPeopleRead) {
    values::Tree tree;
    for (int i = 0; i <= PathModel::MostRows; ++i)
        tree.ProvideNode(S("/top/n%1").arg(i));
    const auto same = [](const QString& path) { return path; };
    PathModel model(same, same, nullptr);
    model.Follow(tree.FindNode(S("/top")));
    EXPECT_TRUE(model.IsCut());
    EXPECT_EQ(model.rowCount(), PathModel::MostRows);
}

}  // namespace
