// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/severitylook.h>

#include <QtCore/QCoreApplication>
#include <QtWidgets/QStyle>

QColor severitylook::Colour(ESeverity severity, const QPalette& palette) {
    constexpr int middle = 128;
    const bool isDark = palette.color(QPalette::Window).lightness() < middle;
    switch (severity) {
        case ESeverity::Ok:
            return isDark ? QColor(0x81, 0xc7, 0x84) : QColor(0x1b, 0x5e, 0x20);
        case ESeverity::Look:
            return isDark ? QColor(0xff, 0xd5, 0x4f) : QColor(0x8a, 0x4b, 0x00);
        case ESeverity::Act:
            return isDark ? QColor(0xff, 0x8a, 0x80) : QColor(0xb7, 0x1c, 0x1c);
        case ESeverity::Stale:
        case ESeverity::Unknown:
            return isDark ? QColor(0xa8, 0xab, 0xb0) : QColor(0x5c, 0x5f, 0x66);
    }
    Q_UNREACHABLE();
}

QIcon severitylook::Icon(ESeverity severity, const QStyle& style) {
    const auto standard = [&style](QStyle::StandardPixmap icon) { return style.standardIcon(icon); };
    switch (severity) {
        case ESeverity::Ok:
            return standard(QStyle::SP_DialogApplyButton);
        case ESeverity::Look:
            return standard(QStyle::SP_MessageBoxWarning);
        case ESeverity::Act:
            return standard(QStyle::SP_MessageBoxCritical);
        case ESeverity::Stale:
            return standard(QStyle::SP_BrowserReload);
        case ESeverity::Unknown:
            return standard(QStyle::SP_MessageBoxQuestion);
    }
    Q_UNREACHABLE();
}

QString severitylook::Word(ESeverity severity) {
    switch (severity) {
        case ESeverity::Ok:
            return QCoreApplication::translate("SeverityLook", "in order");
        case ESeverity::Look:
            return QCoreApplication::translate("SeverityLook", "worth a look");
        case ESeverity::Act:
            return QCoreApplication::translate("SeverityLook", "needs action");
        case ESeverity::Stale:
            return QCoreApplication::translate("SeverityLook", "out of date");
        case ESeverity::Unknown:
            return QCoreApplication::translate("SeverityLook", "unknown");
    }
    Q_UNREACHABLE();
}
