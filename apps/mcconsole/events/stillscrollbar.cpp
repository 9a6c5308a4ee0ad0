// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/events/stillscrollbar.h>

#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionSlider>

#include <chrono>

namespace {

constexpr std::chrono::milliseconds FollowTime(2000);

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
    const std::chrono::milliseconds sinceDrawn(m_sinceDrawn.isValid() ? m_sinceDrawn.elapsed()
                                                                      : FollowTime.count());
    if (isFollowing && sinceDrawn < FollowTime)
        m_soon.start(FollowTime - sinceDrawn);
    else
        update();
}

void StillScrollBar::paintEvent(QPaintEvent* event) {
    m_drawn = LookOfNow();
    m_sinceDrawn.start();
    QScrollBar::paintEvent(event);
}
