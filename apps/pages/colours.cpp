// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/colours.h>

#include <QtGui/QPalette>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>
#include <QtWidgets/QToolTip>

namespace {

QPalette DarkPalette() {
    const QColor window(0x2b, 0x2d, 0x30);
    const QColor base(0x3a, 0x3d, 0x42);  // lighter than the window: edges of boxes are darker
    const QColor text(0xdf, 0xe1, 0xe5);
    const QColor faint(0x8a, 0x8d, 0x93);
    const QColor highlight(0x2f, 0x65, 0xca);
    QPalette palette(text, window, window.lighter(150), window.darker(140), window.lighter(120), text,
                     Qt::white, base, window);
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::Highlight, highlight);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x6c, 0xa0, 0xff));
    palette.setColor(QPalette::ToolTipBase, base);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::PlaceholderText, faint);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    return palette;
}

/// Styles that draw as the desktop does may keep its light buttons, under light texts.
QString StyleThatObeysPalettes() {
    return QStringLiteral("fusion");
}

void UseStyle(const QString& name) {
    const QString current = QApplication::style()->objectName();
    if (current.compare(name, Qt::CaseInsensitive) != 0) QApplication::setStyle(name);
}

}  // namespace

void colours::Apply(bool isDark) {
    // What the desktop has is only known before it is changed for the first time.
    static const QPalette desktop = QApplication::palette();
    static const QString desktopStyle = QApplication::style()->objectName();
    UseStyle(isDark ? StyleThatObeysPalettes() : desktopStyle);
    const QPalette palette = isDark ? DarkPalette() : desktop;
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
}
