// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/config/configfixture.h>

#include <platform/config/cfgcenter.h>

#include <apps/common/eventwait.h>

#include <tests/support/programrunner.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <chrono>

ConfigTest::ConfigTest() {
    CfgCenter::Instance().SetStorePath(Path());
}

ConfigTest::~ConfigTest() {
    CfgCenter::Instance().SetStorePath(QString());
}

QStringList ConfigTest::Names() const {
    return QDir(m_directory.path())
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

std::unique_ptr<ICfg> ConfigTest::Root() {
    return std::unique_ptr<ICfg>(CfgCenter::Instance().OpenRoot());
}

std::unique_ptr<ICfg> ConfigTest::Reopened() const {
    CfgCenter::Instance().SetStorePath(Path());
    return Root();
}

void ConfigTest::WriteFile(const QByteArray& bytes, const QString& name) const {
    QFile file(Path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

QByteArray ConfigTest::FileBytes(const QString& name) const {
    // Some systems let nobody open it at the moment in which it is replaced.
    constexpr std::chrono::seconds Patience(5);
    QFile file(Path(name));
    const auto isOpen = [&file] { return file.open(QIODevice::ReadOnly); };
    if (!isOpen() && file.exists()) eventwait::Until(isOpen, Patience);
    return file.isOpen() ? file.readAll() : QByteArray();
}

QString ConfigTest::ReadByAnotherProcess(const QString& key) const {
    const ProgramOutcome outcome = ProgramRunner::Run(
        QStringLiteral(CFGWRITER), {Path(), QStringLiteral("get"), key, QStringLiteral("absent")});
    EXPECT_EQ(outcome.code, 0);
    QString content = QString::fromUtf8(outcome.output);
    content.chop(1);
    return content;
}

bool ConfigTest::WriteByAnotherProcess(const QString& key, const QString& content) const {
    return ProgramRunner::Run(QStringLiteral(CFGWRITER), {Path(), QStringLiteral("set"), key, content})
               .code == 0;
}
