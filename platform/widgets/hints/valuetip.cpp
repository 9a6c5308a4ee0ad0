// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/hints/valuetip.h>

#include <QtGui/QRegion>
#include <QtWidgets/QToolTip>
#include <QtWidgets/QWidget>

namespace {

constexpr int MaxRun = 40;  // characters without a place to break a line at

}  // namespace

QString valuetip::ToHtml(const QString& plainText) {
    const QChar breakHere(0x200B);
    QString broken;
    broken.reserve(plainText.size() + plainText.size() / MaxRun);
    int run = 0;
    for (const QChar character : plainText) {
        if (run >= MaxRun && !character.isLowSurrogate()) {
            broken += breakHere;
            run = 0;
        }
        broken += character;
        run = character.isSpace() ? 0 : run + 1;
        if (character != QLatin1Char('/')) continue;
        broken += breakHere;
        run = 0;
    }
    QString html = broken.toHtmlEscaped();
    return html.replace(QLatin1Char('\n'), QStringLiteral("<br>"));
}

void valuetip::Show(QWidget& widget, const QString& html) {
    QToolTip::showText(widget.mapToGlobal(QPoint(0, widget.height())),
                       QStringLiteral("<qt>%1</qt>").arg(html), &widget);
}

bool valuetip::IsInSight(const QWidget& widget) {
    return widget.isVisible() && widget.isActiveWindow() && !widget.visibleRegion().isEmpty();
}
