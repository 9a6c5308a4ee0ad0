// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/events/stillscrollbar.h>

#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionSlider>

namespace {

constexpr qint64 FollowTime = 2000;  // ms

}  // namespace

StillScrollBar::StillScrollBar(Qt::Orientation orientation, QWidget* parent)
    : QScrollBar(orientation, parent) {
    m_soon.setSingleShot(true);
    connect(&m_soon, &QTimer::timeout, this, &StillScrollBar::DrawIfDifferent);
}

StillScrollBar::Look StillScrollBar::LookOfNow() const {
    QStyleOptionSlider option;
    initStyleOption(&option);
    return {style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this),
            value() == minimum(), value() == maximum()};
}

/// Looked at when all that belongs together is done: a longer range comes before the value at its end.
void StillScrollBar::sliderChange(SliderChange) {
    m_soon.start(0);
}

void StillScrollBar::DrawIfDifferent() {
    const Look look = LookOfNow();
    if (look == m_drawn) return;
    const bool isFollowing = look.isAtEnd && m_drawn.isAtEnd && !isSliderDown();
    const qint64 wait = isFollowing && m_sinceDrawn.isValid() ? FollowTime - m_sinceDrawn.elapsed() : 0;
    if (wait > 0)
        m_soon.start(static_cast<int>(wait));
    else
        update();
}

void StillScrollBar::paintEvent(QPaintEvent* event) {
    m_drawn = LookOfNow();
    m_sinceDrawn.start();
    QScrollBar::paintEvent(event);
}
