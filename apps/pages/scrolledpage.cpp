// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/scrolledpage.h>

#include <QtWidgets/QTabWidget>

ScrolledPage::ScrolledPage(QWidget* page) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);  // Tab leads to what is in it, and that into sight
    setWidget(page);
}

void ScrolledPage::AddTo(QTabWidget& tabs, QWidget* page, const QString& name, const QString& title,
                         const QString& brief) {
    auto* const scrolled = new ScrolledPage(page);
    scrolled->setObjectName(name);
    const int index = tabs.addTab(scrolled, brief.isEmpty() ? title : brief);
    const QString key = KeyOfPage(index).toString(QKeySequence::NativeText);
    tabs.setTabToolTip(index, key.isEmpty() ? title : QStringLiteral("%1 (%2)").arg(title, key));
}

QKeySequence ScrolledPage::KeyOfPage(int index) {
    constexpr int most = 10;  // digits
    return index < most ? QKeySequence(QStringLiteral("Alt+%1").arg((index + 1) % most)) : QKeySequence();
}

QSize ScrolledPage::sizeHint() const {
    return widget()->minimumSizeHint();
}
