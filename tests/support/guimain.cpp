// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include <QtCore/QLocale>
#include <QtWidgets/QApplication>

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    // Nobody's desktop: the same on every machine, and no windows that pop up.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("mcstest"));
    QApplication::setStyle(QStringLiteral("fusion"));
    QLocale::setDefault(QLocale::c());
    return RUN_ALL_TESTS();
}
