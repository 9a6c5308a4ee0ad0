// SPDX-License-Identifier: Apache-2.0
#include <tests/support/runtests.h>

#include <gmock/gmock.h>

#include <QtWidgets/QApplication>

/// Asked by the leak sanitizer: the platform without a display never gives back its screen.
extern "C" Q_DECL_EXPORT const char* __lsan_default_suppressions() {  // NOLINT(bugprone-reserved-identifier)
    return "leak:libqoffscreen\n"
           "leak:QPlatformScreen::QPlatformScreen\n"
           "leak:QScreen::QScreen\n"
           "leak:QWindowSystemInterface::handleScreenAdded\n";
}

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    // Nobody's desktop: the same on every machine, and no windows that pop up.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    UsePlainLanguage();
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("mcstest"));
    QApplication::setStyle(QStringLiteral("fusion"));
    return RunTests();
}
