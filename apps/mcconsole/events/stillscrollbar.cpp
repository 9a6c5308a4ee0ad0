// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/events/stillscrollbar.h>

#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionSlider>

StillScrollBar::StillScrollBar(Qt::Orientation orientation, QWidget* parent)
    : QScrollBar(orientation, parent) {
    m_soon.setSingleShot(true);
    m_soon.setInterval(0);
    connect(&m_soon, &QTimer::timeout, this, [this] {
        if (!(LookOfNow() == m_drawn)) update();
    });
}

StillScrollBar::Look StillScrollBar::LookOfNow() const {
    QStyleOptionSlider option;
    initStyleOption(&option);
    return {style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this),
            value() == minimum(), value() == maximum()};
}

/// Looked at when all that belongs together is done: a longer range comes before the value at its end.
void StillScrollBar::sliderChange(SliderChange) {
    if (!m_soon.isActive()) m_soon.start();
}

void StillScrollBar::paintEvent(QPaintEvent* event) {
    m_drawn = LookOfNow();
    QScrollBar::paintEvent(event);
}
