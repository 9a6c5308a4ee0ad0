// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/vtaccessfile.h>

#include <platform/config/textfile.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

namespace {

using ERight = VtAccessFile::ERight;

QString Text(const char* text) {
    return QString::fromUtf8(text);
}

/// A hash of "secret" that costs little.
const char* const SecretHash =
    "pbkdf2-sha256$1000$73616c7473616c7473616c7473616c74$"
    "74296f2929a3eba9fa31d31636fdc6a389af1f5626d96206889beabaa6be99f1";

QByteArray Rules() {
    return QByteArray(
               "# Who may come in.\n"
               "allow operator read /\n"
               "allow operator write /Server/Command \"/Server/Two Words\"  # two paths\n"
               "allow operator write /Server/Config\n"
               "\n"
               "allow viewer read /Server/Status\r\n"
               "allow receiver create /Server/Dynamic\n"
               "user alice operator ") +
           SecretHash +
           "\n"
           "user \"certificate:Console 1\" viewer\n";
}

class VtAccessFileTest : public testing::Test {
  protected:
    VtAccessFileTest() {
        QString error;
        EXPECT_TRUE(m_file.Parse(Rules(), Text("access"), &error)) << error.toStdString();
    }
    bool Allows(const char* role, ERight right, const char* path) const {
        return m_file.Allows(Text(role), right, Text(path));
    }

    VtAccessFile m_file;
};

TEST_F(VtAccessFileTest, ATokenAdmitsItsUserInTheUsersRole) {
    EXPECT_EQ(m_file.FindRole(Text("alice"), Text("secret")), Text("operator"));
}

TEST_F(VtAccessFileTest, AnythingElseAdmitsNobody) {
    EXPECT_FALSE(m_file.FindRole(Text("alice"), Text("Secret")).has_value());
    EXPECT_FALSE(m_file.FindRole(Text("alice"), QString()).has_value());
    EXPECT_FALSE(m_file.FindRole(Text("bob"), Text("secret")).has_value());
    EXPECT_FALSE(m_file.FindRole(Text("bob"), QString()).has_value());
    EXPECT_FALSE(m_file.FindRole(QString(), QString()).has_value());
    EXPECT_FALSE(m_file.FindRole(Text("certificate:Console 1"), QString()).has_value())
        << "a name of a certificate is no user with a token";
}

TEST_F(VtAccessFileTest, ACertificateAdmitsByItsCommonName) {
    EXPECT_EQ(m_file.FindRoleOfCertificate(Text("Console 1")), Text("viewer"));
    EXPECT_FALSE(m_file.FindRoleOfCertificate(Text("Console 2")).has_value());
    EXPECT_FALSE(m_file.FindRoleOfCertificate(QString()).has_value());
    EXPECT_FALSE(m_file.FindRoleOfCertificate(Text("alice")).has_value());
}

TEST_F(VtAccessFileTest, WhatIsAllowedHoldsAtAndBelowThePath) {
    EXPECT_TRUE(Allows("operator", ERight::Write, "/Server/Command"));
    EXPECT_TRUE(Allows("operator", ERight::Write, "/Server/Command/ShallBeConnected"));
    EXPECT_TRUE(Allows("operator", ERight::Write, "/Server/Two Words/x"));
    EXPECT_TRUE(Allows("operator", ERight::Write, "/Server/Config/x"));
    EXPECT_TRUE(Allows("operator", ERight::Read, "/"));
    EXPECT_TRUE(Allows("operator", ERight::Read, "/anything/at/all"));
    EXPECT_TRUE(Allows("viewer", ERight::Read, "/Server/Status/Online"));
}

TEST_F(VtAccessFileTest, ARightMoreIsAnotherTextOfItsUsers) {
    for (const char* const right : {"read", "write", "create", "own-policies"}) {
        VtAccessFile file;
        QString error;
        EXPECT_TRUE(
            file.Parse(Rules() + "allow operator " + right + " /Server/More\n", Text("access"), &error));
        EXPECT_NE(file.GetTextOf(Text("alice")), m_file.GetTextOf(Text("alice"))) << right;
    }
}

TEST_F(VtAccessFileTest, EachRightIsAllowedByItsWordAndNoOther) {
    const struct {
        const char* word;
        ERight right;
    } rights[] = {{"read", ERight::Read},
                  {"write", ERight::Write},
                  {"create", ERight::Create},
                  {"own-policies", ERight::OwnPolicies}};
    for (const auto& allowed : rights) {
        VtAccessFile file;
        QString error;
        EXPECT_TRUE(file.Parse(QByteArray("allow x ") + allowed.word + " /A\n", Text("access"), &error));
        for (const auto& asked : rights)
            EXPECT_EQ(file.Allows(Text("x"), asked.right, Text("/A/b")), asked.right == allowed.right)
                << allowed.word << ' ' << asked.word;
    }
}

TEST_F(VtAccessFileTest, WhatNoRuleAllowsIsNotAllowed) {
    EXPECT_FALSE(Allows("operator", ERight::Write, "/Server"));
    EXPECT_FALSE(Allows("operator", ERight::Write, "/Server/Commander")) << "a longer name is another name";
    EXPECT_FALSE(Allows("operator", ERight::Create, "/Server/Command"));
    EXPECT_FALSE(Allows("viewer", ERight::Read, "/"));
    EXPECT_FALSE(Allows("viewer", ERight::Write, "/Server/Status"));
    EXPECT_FALSE(Allows("nobody", ERight::Read, "/"));
    EXPECT_FALSE(Allows("", ERight::Read, "/"));
}

TEST_F(VtAccessFileTest, PrefixesComeInTheOrderOfTheFile) {
    const QStringList expected = {Text("/Server/Command"), Text("/Server/Two Words"), Text("/Server/Config")};
    EXPECT_EQ(m_file.GetPrefixes(Text("operator"), ERight::Write), expected);
    EXPECT_TRUE(m_file.GetPrefixes(Text("nobody"), ERight::Write).isEmpty());
}

TEST_F(VtAccessFileTest, AFileWithAnErrorChangesNothing) {
    QString error;
    EXPECT_FALSE(m_file.Parse("allow viewer read /\nnonsense\n", Text("access"), &error));
    EXPECT_EQ(m_file.FindRole(Text("alice"), Text("secret")), Text("operator"));
    EXPECT_FALSE(Allows("viewer", ERight::Read, "/"));
}

TEST_F(VtAccessFileTest, ALineThatWasMadeForAUserIsUnderstood) {
    const QString token = VtTokenHash::CreateToken();
    const QString line = VtAccessFile::UserLine(Text("Bob #1"), Text("operator"), VtTokenHash::Of(token));
    QString error;
    EXPECT_TRUE(m_file.Parse("allow operator read /\n" + line.toUtf8(), Text("access"), &error))
        << error.toStdString();
    EXPECT_EQ(m_file.FindRole(Text("Bob #1"), token), Text("operator"));
}

struct Wrong {
    const char* name;
    QByteArray text;
    const char* error;
};

class VtAccessFileErrors : public testing::TestWithParam<Wrong> {};

TEST_P(VtAccessFileErrors, NameFileAndLine) {
    VtAccessFile file;
    QString error;
    EXPECT_FALSE(file.Parse(GetParam().text, Text("access"), &error));
    EXPECT_EQ(error, Text(GetParam().error));
}

const QByteArray Hash(SecretHash);
const Wrong WrongFiles[] = {
    {"UnknownWord", "\n\ngrant x read /", "access:3: 'grant' is neither 'allow' nor 'user'"},
    {"AllowAlone", "allow", "access:1: 'allow' needs a role, a right and at least one path"},
    {"AllowWithoutPath", "allow x read", "access:1: 'allow' needs a role, a right and at least one path"},
    {"UnknownRight", "allow x delete /",
     "access:1: 'delete' is neither 'read', 'write', 'create' nor 'own-policies'"},
    {"RelativePath", "allow x read a/b", "access:1: 'a/b' is not a path"},
    {"PathThatEndsInASlash", "allow x read / /a/", "access:1: '/a/' is not a path"},
    {"PathWithAnEmptyName", "allow x read /a//b", "access:1: '/a//b' is not a path"},
    {"EmptyRole", "allow \"\" read /", "access:1: '' cannot be a role"},
    {"OpenQuotes", "allow \"x read /", "access:1: a quotation mark has no partner"},
    {"TextBehindQuotes", "allow \"x\"y read /", "access:1: a quotation mark has no partner"},
    {"UserWithoutHash", "user a x", "access:1: 'user' needs a name, a role and the hash of a token"},
    {"UserWithTooMuch", "user a x " + Hash + " y",
     "access:1: 'user' needs a name, a role and the hash of a token"},
    {"CertificateWithAHash", "user certificate:a x " + Hash,
     "access:1: a user by certificate needs a name and a role"},
    {"CertificateWithoutName", "user certificate: x", "access:1: 'certificate:' cannot be a user"},
    {"EmptyUser", "user \"\" x " + Hash, "access:1: '' cannot be a user"},
    {"BlankAround", "user \" a\" x " + Hash, "access:1: ' a' cannot be a user"},
    {"MalformedHash", "allow x read /\nuser a x pbkdf2-sha256$1$2$3",
     "access:2: the hash of the user 'a' is malformed"},
    {"TokenInsteadOfHash", "user a x secret", "access:1: the hash of the user 'a' is malformed"},
    {"UserTwice", "allow x read /\nuser a x " + Hash + "\nuser a x " + Hash,
     "access:3: the user 'a' is in line 2 already"},
    {"RoleWithoutRules", "allow x read /\nuser a y " + Hash, "access:2: nothing is allowed to the role 'y'"},
    {"NoUtf8", "allow x read /\n\xff\xfe", "access:2: is not UTF-8 text"},
    {"CutUtf8", "allow x read /\xc3", "access:1: is not UTF-8 text"},
    {"ControlCharacter", QByteArray("allow x read /\0", 15), "access:1: has a control character in it"},
    {"EndlessLine", QByteArray(TextFile::MaxLineLength + 1, 'x'), "access:1: is too long"},
    {"EndlessFile", QByteArray(int(TextFile::MaxBytes) + 1, '\n'), "access: is larger than 1048576 bytes"},
};

INSTANTIATE_TEST_SUITE_P(, VtAccessFileErrors, testing::ValuesIn(WrongFiles),
                         [](const testing::TestParamInfo<Wrong>& row) {
                             return std::string(row.param.name);
                         });

TEST(VtAccessFileBounds, PathsAreCounted) {
    QByteArray text;
    for (int i = 0; i <= VtAccessFile::MaxRules; ++i)
        text += "allow x" + QByteArray::number(i / 100) + " read /" + QByteArray::number(i) + "\n";
    VtAccessFile file;
    QString error;
    EXPECT_FALSE(file.Parse(text, Text("access"), &error));
    EXPECT_EQ(error, Text("access:10001: there are more than 10000 paths"));
}

TEST(VtAccessFileLoad, ReadsTheFile) {
    const QTemporaryDir directory;
    QFile file(directory.filePath(Text("access")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(Rules());
    file.close();
    VtAccessFile access;
    QString error;
    EXPECT_TRUE(access.Load(file.fileName(), &error)) << error.toStdString();
    EXPECT_EQ(access.FindRole(Text("alice"), Text("secret")), Text("operator"));
}

TEST(VtAccessFileLoad, SaysWhichFileIsMissing) {
    const QTemporaryDir directory;
    const QString path = directory.filePath(Text("nothing"));
    VtAccessFile access;
    QString error;
    EXPECT_FALSE(access.Load(path, &error));
    EXPECT_TRUE(error.startsWith(path + Text(": "))) << error.toStdString();
}

TEST(VtAccessFileLoad, RefusesADirectory) {
    const QTemporaryDir directory;
    VtAccessFile access;
    QString error;
    EXPECT_FALSE(access.Load(directory.path(), &error));
    EXPECT_EQ(error, directory.path() + Text(": is not a file"));
}

}  // namespace
