// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/connectdialog.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <QtTest/QTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>

#include <memory>

namespace {

QString S(const char* text) {
    return QString::fromLatin1(text);
}

class ConnectDialogTest : public testing::Test {
  protected:
    void AddRecent(const char* server, const char* user, const char* caFile) {
        RecentServers::Entry entry;
        ASSERT_EQ(entry.server.Parse(S(server)), QString());
        entry.user = S(user);
        entry.caFile = S(caFile);
        recent.Add(entry);
    }
    void Open() {
        dialog = std::make_unique<ConnectDialog>(recent, options, nullptr);
        dialog->show();
    }
    QLineEdit* Field(const char* name) const { return dialog->findChild<QLineEdit*>(S(name)); }
    QString Text(const char* name) const { return Field(name)->text(); }
    QComboBox* Address() const { return dialog->findChild<QComboBox*>(S("ServerAddress")); }
    bool IsEncrypted() const { return dialog->findChild<QCheckBox*>()->isChecked(); }
    void Type(QLineEdit* field, const QString& text) const {
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, text);
    }
    void TypeAddress(const char* text) const { Type(Address()->lineEdit(), S(text)); }
    void Paste(const char* address) const {
        Address()->lineEdit()->selectAll();
        Address()->lineEdit()->insert(QString::fromUtf8(address));
    }
    /// What Enter is answered with; empty: the dialog closes.
    QString Enter() const {
        QTest::keyClick(Address(), Qt::Key_Return);
        if (dialog->result() == QDialog::Accepted) return QString();
        return dialog->findChild<QLabel*>(S("Problem"))->text();
    }

    RecentServers recent;
    VtClientOptions options;
    std::unique_ptr<ConnectDialog> dialog;
};

TEST_F(ConnectDialogTest, OffersTheServerOfThisMachineAtFirst) {
    Open();
    EXPECT_EQ(Address()->currentText(), S("127.0.0.1:7450"));
    EXPECT_EQ(Enter(), QString());
    EXPECT_EQ(dialog->GetServer().ToText(), S("127.0.0.1:7450"));
}

TEST_F(ConnectDialogTest, OffersTheLastServerAsItWasUsed) {
    AddRecent("mcss://tower:8000", "alice", "/ca.pem");
    Open();
    EXPECT_EQ(Address()->currentText(), S("tower:8000"));
    EXPECT_TRUE(IsEncrypted());
    EXPECT_EQ(Text("CaFile"), S("/ca.pem"));
    EXPECT_EQ(Text("User"), S("alice"));
    EXPECT_EQ(Enter(), QString());
    EXPECT_EQ(dialog->GetServer().ToText(), S("mcss://tower:8000"));
    EXPECT_EQ(dialog->GetOptions().caFile, S("/ca.pem"));
}

TEST_F(ConnectDialogTest, ShowsWhatTheCommandLineSaysBeforeWhatWasUsed) {
    AddRecent("tower", "alice", "");
    options.user = S("bob");
    options.token = S("secret");
    options.caFile = S("/other.pem");
    Open();
    EXPECT_EQ(Text("User"), S("bob"));
    EXPECT_EQ(Text("Token"), S("secret"));
    EXPECT_EQ(Text("CaFile"), S("/other.pem"));
    EXPECT_TRUE(IsEncrypted());
}

TEST_F(ConnectDialogTest, OffersEncryptionWhereTheCommandLineAsksForIt) {
    AddRecent("tower", "", "");
    Open();
    dialog->PreferEncryption();
    EXPECT_EQ(Enter(), QString());
    EXPECT_TRUE(dialog->GetServer().isEncrypted);
}

TEST_F(ConnectDialogTest, ShowsNoTokenOfAnotherUser) {
    AddRecent("van", "bob", "");
    AddRecent("tower", "alice", "");
    options.user = S("bob");
    options.token = S("secret");
    Open();
    Address()->setFocus();
    QTest::keyClick(Address(), Qt::Key_Down);
    EXPECT_EQ(Text("User"), S("bob"));
    EXPECT_EQ(Text("Token"), S("secret"));
    QTest::keyClick(Address(), Qt::Key_Up);
    EXPECT_EQ(Text("User"), S("alice"));
    EXPECT_EQ(Text("Token"), QString());
}

TEST_F(ConnectDialogTest, AsksWhoseATokenIs) {
    Open();
    Type(Field("Token"), S("secret"));
    EXPECT_EQ(Enter(), S("A token belongs to a user: say whose it is."));
    Type(Field("User"), S("alice"));
    EXPECT_EQ(Enter(), QString());
    EXPECT_EQ(dialog->GetOptions().token, S("secret"));
}

TEST_F(ConnectDialogTest, SendsATokenToNatsOnThisMachineOnlyUnlessEncrypted) {
    Open();
    Type(Field("User"), S("alice"));
    Type(Field("Token"), S("secret"));
    TypeAddress("nats://localhost,hub/tower");
    EXPECT_EQ(Enter(),
              S("A token is a secret: it is sent to other machines only if the connection is encrypted."));
    TypeAddress("nats://localhost,127.0.0.1:4333/tower");
    EXPECT_EQ(Enter(), QString());
    EXPECT_EQ(dialog->GetServer().ToText(), S("nats://localhost,127.0.0.1:4333/tower"));
}

TEST_F(ConnectDialogTest, SendsATokenToOtherMachinesEncryptedOnly) {
    Open();
    TypeAddress("tower");
    Type(Field("User"), S("alice"));
    Type(Field("Token"), S("secret"));
    EXPECT_EQ(Enter(),
              S("A token is a secret: it is sent to other machines only if the connection is encrypted."));
    QTest::keyClick(dialog->findChild<QCheckBox*>(), Qt::Key_Space);
    EXPECT_EQ(Enter(), QString());
    EXPECT_TRUE(dialog->GetServer().isEncrypted);
}

TEST_F(ConnectDialogTest, TakesAnAuthorityOnlyWhereTheConnectionIsEncrypted) {
    AddRecent("mcss://tower", "", "/ca.pem");
    Open();
    EXPECT_TRUE(Field("CaFile")->isEnabled());
    QTest::keyClick(dialog->findChild<QCheckBox*>(), Qt::Key_Space);
    EXPECT_FALSE(Field("CaFile")->isEnabled());
    EXPECT_EQ(Enter(), QString());
    EXPECT_FALSE(dialog->GetServer().isEncrypted);
    EXPECT_EQ(dialog->GetOptions().caFile, QString());
}

TEST_F(ConnectDialogTest, UnderstandsTheSchemeThatMeansEncryption) {
    Open();
    TypeAddress("mcss://tower");
    EXPECT_TRUE(IsEncrypted());
    EXPECT_EQ(Enter(), QString());
    EXPECT_EQ(dialog->GetServer().ToText(), S("mcss://tower:7450"));
}

TEST_F(ConnectDialogTest, SaysInPlainTextWhatCanBeNoServer) {
    Open();
    TypeAddress("<b>tower</b>");
    EXPECT_EQ(Enter(), S("\"<b>tower</b>\" cannot be a server: write HOST or HOST:PORT."));
    EXPECT_EQ(dialog->findChild<QLabel*>(S("Problem"))->textFormat(), Qt::PlainText);
}

TEST_F(ConnectDialogTest, TellsHowAHostBeyondLatin1IsWritten) {
    Open();
    TypeAddress("xn--1xa.example");
    EXPECT_EQ(Enter(), QString());
    Open();
    Paste("\xcf\x80.example");
    EXPECT_EQ(Enter(), QString::fromUtf8("\"\xcf\x80.example\" has letters that addresses cannot have: write "
                                         "xn--1xa.example."));
    Paste("t\xc3\xbcrm.example");
    EXPECT_EQ(Enter(), QString());
    EXPECT_EQ(dialog->GetServer().ToVtAddress(), QString::fromUtf8("mcs://t\xc3\xbcrm.example"));
}

TEST_F(ConnectDialogTest, StaysOnTheScreenWhateverIsPasted) {
    Open();
    const int width = dialog->width();
    Address()->lineEdit()->clear();
    Address()->lineEdit()->insert(QString(50000, QLatin1Char('x')));
    EXPECT_NE(Enter(), QString());
    QCoreApplication::processEvents();
    EXPECT_LE(dialog->width(), width + 200);
}

}  // namespace
