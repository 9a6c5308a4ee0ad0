// SPDX-License-Identifier: Apache-2.0
#include <tests/support/runtests.h>

#include <gmock/gmock.h>

#include <QtCore/QCoreApplication>

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    UsePlainLanguage();
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("mcstest"));
    return RunTests();
}
