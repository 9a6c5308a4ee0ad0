// SPDX-License-Identifier: Apache-2.0
// What a user may not read or write. The superuser may anything, so that another user has to try.
#include <platform/config/cfgcenter.h>

#include <tests/platform/config/configfixture.h>
#include <tests/support/programrunner.h>

#include <gmock/gmock.h>

#include <QtCore/QFile>

#include <sys/stat.h>

namespace {

class Permissions : public ConfigTest {
  protected:
    Permissions() {
        Allow(QStringLiteral("."), Everything);  // the directory of the test
    }
    ~Permissions() override { Allow(QStringLiteral("."), Everything); }

    static constexpr QFileDevice::Permissions Reading =
        QFileDevice::ReadOwner | QFileDevice::ReadGroup | QFileDevice::ReadOther;
    static constexpr QFileDevice::Permissions Entering =
        QFileDevice::ExeOwner | QFileDevice::ExeGroup | QFileDevice::ExeOther;
    static constexpr QFileDevice::Permissions Everything =
        Reading | Entering | QFileDevice::WriteOwner | QFileDevice::WriteGroup | QFileDevice::WriteOther;

    void Allow(const QString& name, QFileDevice::Permissions permissions) const {
        EXPECT_TRUE(QFile::setPermissions(Path(name), permissions));
    }

    ProgramOutcome RunAsNobody(const QStringList& arguments) const {
        return ProgramRunner::Run(QStringLiteral(CFGWRITER_AS_NOBODY), QStringList(Path()) + arguments);
    }
    ProgramOutcome GetAsNobody() const {
        return RunAsNobody({QStringLiteral("get"), QStringLiteral("k"), QStringLiteral("fallback")});
    }
    ProgramOutcome SetAsNobody(const QString& content) const {
        return RunAsNobody({QStringLiteral("set"), QStringLiteral("k"), content});
    }
};

const QByteArray Bytes = "; a comment\n[General]\nk=1\n";

// It is not damaged: whoever forbade it may allow it again.
TEST_F(Permissions, AFileThatMayNotBeReadStaysAndIsReadOnceItMay) {
    WriteFile(Bytes);
    Allow(QStringLiteral("app.ini"), {});
    const ProgramOutcome outcome = GetAsNobody();
    EXPECT_EQ(outcome.output, QByteArray("fallback\n"));
    EXPECT_EQ(outcome.errors, (QStringLiteral("The configuration file '") + Path() +
                               QStringLiteral("' cannot be used (Permission denied); defaults are used\n"))
                                  .toUtf8());
    EXPECT_EQ(SetAsNobody(QStringLiteral("2")).code, 1);
    EXPECT_THAT(Names(), testing::ElementsAre(QStringLiteral("app.ini")));
    Allow(QStringLiteral("app.ini"), Everything);
    EXPECT_EQ(FileBytes(), Bytes);
    EXPECT_EQ(GetAsNobody().output, QByteArray("1\n"));
    EXPECT_EQ(SetAsNobody(QStringLiteral("2")).code, 0);
    EXPECT_EQ(GetAsNobody().output, QByteArray("2\n"));
}

TEST_F(Permissions, AFileThatMayNotBeReadStaysWhereTheDirectoryMayNotBeChanged) {
    WriteFile(Bytes);
    Allow(QStringLiteral("app.ini"), {});
    Allow(QStringLiteral("."), Reading | Entering);
    const ProgramOutcome outcome = SetAsNobody(QStringLiteral("2"));
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.errors.count("cannot be used"), 1) << outcome.errors.toStdString();
    EXPECT_EQ(outcome.errors.count("cannot be written"), 1) << outcome.errors.toStdString();
    EXPECT_EQ(outcome.errors.count('\n'), 2) << outcome.errors.toStdString();
    Allow(QStringLiteral("app.ini"), Reading);
    EXPECT_EQ(FileBytes(), Bytes);
}

TEST_F(Permissions, AFileThatMayOnlyBeReadIsReadAndNotReplaced) {
    WriteFile(Bytes);
    Allow(QStringLiteral("app.ini"), Reading);
    EXPECT_EQ(GetAsNobody().output, QByteArray("1\n"));
    const ProgramOutcome outcome = SetAsNobody(QStringLiteral("2"));
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.errors,
              (QStringLiteral("The configuration file '") + Path() +
               QStringLiteral("' cannot be written (Permission denied); the changes are kept in memory\n"))
                  .toUtf8());
    EXPECT_EQ(FileBytes(), Bytes);
    EXPECT_THAT(Names(), testing::ElementsAre(QStringLiteral("app.ini")));
}

TEST_F(Permissions, AFileInADirectoryThatMayOnlyBeReadIsReadAndStays) {
    WriteFile(Bytes);
    Allow(QStringLiteral("."), Reading | Entering);
    const ProgramOutcome reading = GetAsNobody();
    EXPECT_EQ(reading.output, QByteArray("1\n"));
    EXPECT_EQ(reading.errors, QByteArray());
    EXPECT_EQ(SetAsNobody(QStringLiteral("2")).code, 1);
    EXPECT_EQ(FileBytes(), Bytes);
}

TEST_F(Permissions, WhatAReadOnlyFileHoldsAlreadyCountsAsCommitted) {
    WriteFile(Bytes);
    Allow(QStringLiteral("app.ini"), Reading);
    Allow(QStringLiteral("."), Reading | Entering);
    const ProgramOutcome outcome = SetAsNobody(QStringLiteral("1"));
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.errors, QByteArray());
}

TEST_F(Permissions, ACommitKeepsThoseOfTheFile) {
    WriteFile(Bytes);
    Allow(QStringLiteral("app.ini"), QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    const QFileDevice::Permissions before = QFile::permissions(Path());
    Root()->WriteInt(QStringLiteral("k"), 2);
    ASSERT_TRUE(Root()->CommitKey(QStringLiteral("k")));
    EXPECT_EQ(QFile::permissions(Path()), before);
}

TEST_F(Permissions, AFileThatAServerHoldsIsHeldForOtherUsersTooWhateverItsMask) {
    WriteFile(Bytes);
    Allow(QStringLiteral("app.ini"), Everything);
    const mode_t before = umask(077);
    QString error;
    EXPECT_TRUE(CfgCenter::Instance().HoldStore(&error)) << error.toStdString();
    umask(before);
    const ProgramOutcome outcome = RunAsNobody({QStringLiteral("hold")});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(outcome.output.toStdString(), testing::HasSubstr("' is used by mcstest (process "));
}

TEST_F(Permissions, ANewFileIsItsOwnersOnly) {
    const mode_t before = umask(0);
    Root()->WriteInt(QStringLiteral("k"), 2);
    EXPECT_TRUE(Root()->CommitKey(QStringLiteral("k")));
    umask(before);
    EXPECT_EQ(QFile::permissions(Path()) & (QFileDevice::ReadGroup | QFileDevice::WriteGroup |
                                            QFileDevice::ReadOther | QFileDevice::WriteOther),
              QFileDevice::Permissions());
}

TEST_F(Permissions, ACommitThroughALinkReplacesWhatTheLinkLeadsTo) {
    WriteFile(Bytes, QStringLiteral("real.ini"));
    ASSERT_TRUE(QFile::link(Path(QStringLiteral("real.ini")), Path()));
    Root()->WriteInt(QStringLiteral("k"), 2);
    ASSERT_TRUE(Root()->CommitKey(QStringLiteral("k")));
    EXPECT_TRUE(QFileInfo(Path()).isSymLink());
    EXPECT_EQ(FileBytes(QStringLiteral("real.ini")), QByteArray("[General]\nk=2\n"));
    EXPECT_THAT(Names(), testing::ElementsAre(QStringLiteral("app.ini"), QStringLiteral("real.ini")));
}

}  // namespace
