// SPDX-License-Identifier: Apache-2.0
#include <tests/support/runtests.h>

#include <QtCore/QCommandLineParser>
#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtCore/QProcess>

#include <gmock/gmock.h>

#include <cstdio>

namespace {

/// The full names of the tests that stand in the source file \a name; of all, if it is empty.
QStringList TestsIn(const QString& name) {
    QStringList tests;
    const testing::UnitTest& program = *testing::UnitTest::GetInstance();
    for (int i = 0; i < program.total_test_suite_count(); ++i) {
        const testing::TestSuite& suite = *program.GetTestSuite(i);
        for (int j = 0; j < suite.total_test_count(); ++j) {
            const testing::TestInfo& test = *suite.GetTestInfo(j);
            if (!name.isEmpty() && QFileInfo(QString::fromUtf8(test.file())).fileName() != name) continue;
            tests += QString::fromUtf8(suite.name()) + QLatin1Char('.') + QString::fromUtf8(test.name());
        }
    }
    return tests;
}

int RunEachInItsOwnProcess(const QStringList& tests) {
    int status = 0;
    for (const QString& test : tests) {
        const QStringList words{QStringLiteral("--gtest_filter=") + test};
        if (QProcess::execute(QCoreApplication::applicationFilePath(), words) != 0) status = 1;
    }
    return status;
}

}  // namespace

void UsePlainLanguage() {
    qputenv("LC_ALL", "C.UTF-8");
    qunsetenv("LANGUAGE");
    QLocale::setDefault(QLocale::c());
}

int RunTests() {
    QCommandLineParser parser;
    parser.addOption({QStringLiteral("source"), QString(), QStringLiteral("name")});
    parser.addOption({QStringLiteral("alone"), QString()});
    parser.process(QCoreApplication::arguments());
    if (!parser.isSet(QStringLiteral("source")) && !parser.isSet(QStringLiteral("alone")))
        return RUN_ALL_TESTS();
    const QStringList tests = TestsIn(parser.value(QStringLiteral("source")));
    if (tests.isEmpty()) {
        std::fprintf(stderr, "no test stands in that source\n");
        return 1;
    }
    if (parser.isSet(QStringLiteral("alone"))) return RunEachInItsOwnProcess(tests);
    testing::GTEST_FLAG(filter) = tests.join(QLatin1Char(':')).toStdString();
    return RUN_ALL_TESTS();
}
