// SPDX-License-Identifier: Apache-2.0
// Who knows no more than where NATS is finds the stations there in the dialog that asks for a server.
#include <apps/mcconsole/connectdialog.h>

#include <tests/apps/mcconsole/ingerman.h>
#include <tests/apps/mcconsole/memorystations.h>
#include <tests/support/printing.h>

#include <gmock/gmock.h>

#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>

#include <memory>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

QString S(const char* text) {
    return QString::fromUtf8(text);
}

class StationsDialog : public testing::Test {
  protected:
    void Open() {
        dialog = std::make_unique<ConnectDialog>(recent, options, nullptr, stations.Maker());
        dialog->show();
        QCoreApplication::processEvents();
    }
    void OpenAndLook() {
        Open();
        Unfold();
        LookAt("hub");
        stations.BeOpen();
    }
    void Unfold() {
        QTest::keyClick(dialog->findChild<QGroupBox*>(S("Stations")), Qt::Key_Space);
        QCoreApplication::processEvents();
    }
    void LookAt(const char* place) const {
        QLineEdit* const field = dialog->findChild<QComboBox*>(S("NatsAddress"))->lineEdit();
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(dialog->focusWidget(), S(place));
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Return);
    }
    QTableView* Table() const { return dialog->findChild<QTableView*>(S("StationTable")); }
    QLineEdit* Filter() const { return dialog->findChild<QLineEdit*>(S("StationFilter")); }
    std::string State() const { return dialog->findChild<QLabel*>(S("StationsState"))->text().toStdString(); }
    std::string Server() const {
        return dialog->findChild<QComboBox*>(S("ServerAddress"))->currentText().toStdString();
    }
    std::vector<std::string> Listed() const {
        std::vector<std::string> names;
        for (int row = 0; row < Table()->model()->rowCount(); ++row)
            names.push_back(Table()->model()->index(row, 0).data().toString().toStdString());
        return names;
    }
    QPoint Middle(int row, int column = 0) const {
        return Table()->visualRect(Table()->model()->index(row, column)).center();
    }

    MemoryStations stations;
    RecentServers recent;
    VtClientOptions options;
    std::unique_ptr<ConnectDialog> dialog;
};

TEST_F(StationsDialog, ListsWhoIsThereAndWhoComesLater) {
    OpenAndLook();
    EXPECT_EQ(State(), "Nobody offers a station at hub yet.");
    stations.Say("tower");
    EXPECT_THAT(Listed(), ElementsAre("tower"));
    stations.Say("mast");
    EXPECT_THAT(Listed(), ElementsAre("mast", "tower"));
    EXPECT_EQ(State(), "2 stations");
    EXPECT_EQ(stations.asked, 1) << "whoever is there was asked to say so";
}

TEST_F(StationsDialog, EnterWhereNatsIsListsAndConnectsNowhere) {
    Open();
    Unfold();
    LookAt("hub");
    EXPECT_NE(dialog->result(), QDialog::Accepted);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(State(), "Connecting to NATS at hub");
}

TEST_F(StationsDialog, ItsKeyUnfoldsItAndLeadsToWhereNatsIs) {
    Open();
    QApplication::setActiveWindow(dialog.get());
    QTest::keyClick(dialog.get(), Qt::Key_N, Qt::AltModifier);
    QCoreApplication::processEvents();
    EXPECT_TRUE(Table()->isVisible());
    const auto* const address = dialog->findChild<QComboBox*>(S("NatsAddress"));
    EXPECT_TRUE(address->lineEdit()->hasFocus());
    QTest::keyClick(dialog->focusWidget(), Qt::Key_Tab);
    QTest::keyClick(dialog->focusWidget(), Qt::Key_Tab);
    EXPECT_TRUE(Filter()->hasFocus());
    QTest::keyClick(Filter(), Qt::Key_Tab);
    EXPECT_TRUE(Table()->hasFocus());
}

TEST_F(StationsDialog, AClickFillsInTheServerAndADoubleClickConnects) {
    OpenAndLook();
    stations.Say("tower");
    stations.Say("mast");
    QTest::mouseClick(Table()->viewport(), Qt::LeftButton, Qt::NoModifier, Middle(1));
    EXPECT_EQ(Server(), "nats://hub/tower");
    EXPECT_TRUE(dialog->isVisible());
    QTest::mouseClick(Table()->viewport(), Qt::LeftButton, Qt::NoModifier, Middle(0));
    QTest::mouseDClick(Table()->viewport(), Qt::LeftButton, Qt::NoModifier, Middle(0));
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_EQ(dialog->GetServer().ToText(), S("nats://hub/mast"));
}

TEST_F(StationsDialog, KeysAloneFindAStationAndConnectToIt) {
    OpenAndLook();
    for (const char* const name : {"tower-1", "tower-2", "mast"})
        stations.Say(name);
    Filter()->setFocus();
    QTest::keyClicks(Filter(), S("TOWER"));
    EXPECT_THAT(Listed(), ElementsAre("tower-1", "tower-2"));
    EXPECT_EQ(State(), "2 of 3 stations");
    QTest::keyClick(Filter(), Qt::Key_Return);
    QTest::keyClick(Table(), Qt::Key_Down);
    EXPECT_EQ(Server(), "nats://hub/tower-2");
    QTest::keyClick(Table(), Qt::Key_Return);
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_EQ(dialog->GetServer().ToText(), S("nats://hub/tower-2"));
}

TEST_F(StationsDialog, AColumnsTitleSorts) {
    OpenAndLook();
    stations.Say("tower", "a machine");
    stations.Say("mast", "the machine");
    QHeaderView* const titles = Table()->horizontalHeader();
    const QPoint title(titles->sectionViewportPosition(3) + 10, titles->height() / 2);
    QTest::mouseClick(titles->viewport(), Qt::LeftButton, Qt::NoModifier, title);
    EXPECT_THAT(Listed(), ElementsAre("tower", "mast"));
}

TEST_F(StationsDialog, SaysInOneLineWhyNatsIsNotReached) {
    Open();
    Unfold();
    LookAt("hub");
    stations.Fail(S("NATS at hub:4222: No server available for connection"));
    EXPECT_EQ(State(),
              "NATS is not reached, trying again: NATS at hub:4222: No server available for connection");
    stations.BeOpen();
    EXPECT_EQ(State(), "Nobody offers a station at hub yet.");
    stations.Refuse(S("Permissions Violation for Publish to \"mcs._all.ask\""));
    EXPECT_EQ(State(), "NATS refuses: Permissions Violation for Publish to \"mcs._all.ask\"");
}

TEST_F(StationsDialog, KeepsWhoWasThereWhileNatsIsLost) {
    OpenAndLook();
    stations.Say("tower");
    stations.Fail(S("the connection to NATS at hub:4222 is lost"));
    EXPECT_THAT(Listed(), ElementsAre("tower"));
    EXPECT_EQ(State(), "NATS is not reached, trying again: the connection to NATS at hub:4222 is lost");
    stations.BeOpen();
    EXPECT_EQ(stations.asked, 2);
}

TEST_F(StationsDialog, SaysWhatCannotBeWhereNatsIs) {
    Open();
    Unfold();
    EXPECT_EQ(State(), "Say where NATS is, and who is there is listed.");
    LookAt("alice@hub");
    EXPECT_EQ(State(), "\"alice@hub\" cannot be where NATS is: write HOST or HOST:PORT.");
    stations.problem = S("the file '/creds' cannot be read");
    LookAt("hub");
    EXPECT_EQ(State(), "the file '/creds' cannot be read");
}

TEST_F(StationsDialog, RemembersWhereNatsWasReachedAlsoIfItIsLeft) {
    OpenAndLook();
    dialog->reject();
    EXPECT_THAT(dialog->GetRecent().GetNats().join(QLatin1Char(' ')).toStdString(), "hub");
    recent = dialog->GetRecent();
    Open();
    EXPECT_TRUE(Table()->isVisible()) << "it lists without being asked";
    stations.BeOpen();
    stations.Say("tower");
    EXPECT_THAT(Listed(), ElementsAre("tower"));
}

TEST_F(StationsDialog, DoesNotRememberWhereNatsWasNotReached) {
    Open();
    Unfold();
    LookAt("hub");
    EXPECT_TRUE(dialog->GetRecent().GetNats().isEmpty());
}

TEST_F(StationsDialog, ListsWhereAStationWasConnectedToBefore) {
    RecentServers::Entry entry;
    entry.server.Parse(S("nats://hub:4333/tower"));
    entry.user = S("alice");
    recent.Add(entry);
    Open();
    EXPECT_EQ(State(), "Connecting to NATS at hub:4333");
    stations.BeOpen();
    stations.Say("tower");
    dialog->findChild<QLineEdit*>(S("User"))->setText(S("bob"));
    QTest::mouseClick(Table()->viewport(), Qt::LeftButton, Qt::NoModifier, Middle(0));
    EXPECT_EQ(dialog->findChild<QLineEdit*>(S("User"))->text(), S("alice")) << "as the last time there";
}

TEST_F(StationsDialog, NatssMeansTlsWithTheAuthorityThatIsEntered) {
    Open();
    Unfold();
    dialog->findChild<QLineEdit*>(S("CaFile"))->setText(S("/ca.pem"));
    LookAt("hub");
    EXPECT_FALSE(stations.options.isTls);
    LookAt("natss://hub");
    EXPECT_TRUE(stations.options.isTls);
    EXPECT_EQ(stations.options.caFile, S("/ca.pem"));
    stations.BeOpen();
    stations.Say("tower");
    QTest::mouseClick(Table()->viewport(), Qt::LeftButton, Qt::NoModifier, Middle(0));
    EXPECT_TRUE(dialog->findChild<QCheckBox*>()->isChecked());
    QTest::keyClick(Table(), Qt::Key_Return);
    EXPECT_EQ(dialog->GetServer().ToText(), S("natss://hub/tower"));
}

TEST_F(StationsDialog, ATokenIsNotSentToAStationElsewhereUnlessEncrypted) {
    OpenAndLook();
    stations.Say("tower");
    dialog->findChild<QLineEdit*>(S("User"))->setText(S("alice"));
    dialog->findChild<QLineEdit*>(S("Token"))->setText(S("secret"));
    QTest::mouseClick(Table()->viewport(), Qt::LeftButton, Qt::NoModifier, Middle(0));
    QTest::keyClick(Table(), Qt::Key_Return);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(dialog->findChild<QLabel*>(S("Problem"))->text(),
              S("A token is a secret: it is sent to other machines only if the connection is encrypted."));
}

TEST_F(StationsDialog, AsksNobodyOnceItIsFolded) {
    OpenAndLook();
    stations.Say("tower");
    Unfold();
    EXPECT_FALSE(Table()->isVisible());
    EXPECT_TRUE(stations.IsClosed());
}

TEST_F(StationsDialog, WithoutNatsSaysSoWhereAnAddressOfItIsTyped) {
    dialog = std::make_unique<ConnectDialog>(recent, options, nullptr, nullptr);
    dialog->show();
    EXPECT_EQ(dialog->findChild<QGroupBox*>(S("Stations")), nullptr);
    QLineEdit* const field = dialog->findChild<QComboBox*>(S("ServerAddress"))->lineEdit();
    const auto* const problem = dialog->findChild<QLabel*>(S("Problem"));
    field->selectAll();
    QTest::keyClicks(field, S("nats://hub/tower"));
    EXPECT_EQ(problem->text(), S("This build knows no NATS: give HOST or HOST:PORT."));
    field->selectAll();
    QTest::keyClicks(field, S("tower"));
    EXPECT_EQ(problem->text(), QString());
}

class GermanStations : protected InGerman, public StationsDialog {};

TEST_F(GermanStations, AllOfItIsGermanAlsoHowTheDeviceIs) {
    ASSERT_GT(english.Count(), 400);
    for (const char* const name : {"tower", "mast", "mcserver", "hill", "hub", "vm_1", "localhost", "0.1"})
        english.Allow(S(name));
    Open();
    Unfold();
    visibletexts::ForEach(*dialog, ReadAt("unfolded"));
    LookAt("alice@hub");
    visibletexts::ForEach(*dialog, ReadAt("no place"));
    LookAt("hub");
    stations.Fail(S("NATS at hub:4222: No server available for connection"));
    visibletexts::ForEach(*dialog, ReadAt("not reached"));
    stations.Fail(S("the connection to NATS at hub:4222 is lost: Connection Closed"));
    visibletexts::ForEach(*dialog, ReadAt("lost"));
    stations.BeOpen();
    visibletexts::ForEach(*dialog, ReadAt("nobody"));
    stations.Say("tower");
    stations.Say("mast");
    visibletexts::ForEach(*dialog, ReadAt("listed"));
    EXPECT_THAT(Table()->model()->index(0, 4).data().toString().toStdString(), HasSubstr("verbunden mit"));
    EXPECT_EQ(faults, "");
}

}  // namespace
