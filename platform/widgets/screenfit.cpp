// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/screenfit.h>

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <QtWidgets/QStyle>
#include <QtWidgets/QWidget>

#include <algorithm>
#include <cstdint>

namespace {

constexpr int GripWidth = 80;     // of the title bar, to get hold of
constexpr int GripHeight = 20;    // what a title bar has at least
constexpr int SmallestSize = 50;  // a smaller window would not be seen
const Qt::WindowStates Unusual = Qt::WindowMinimized | Qt::WindowMaximized | Qt::WindowFullScreen;

/// One dimension of a rectangle, with ends that calculations do not overflow; `end` is beyond it.
struct Span {
    std::int64_t begin;
    std::int64_t end;

    std::int64_t Length() const { return end - begin; }
};

Span Horizontal(const QRect& rect) {
    return {rect.left(), std::int64_t(rect.right()) + 1};
}

Span Vertical(const QRect& rect) {
    return {rect.top(), std::int64_t(rect.bottom()) + 1};
}

std::int64_t Overlap(const Span& a, const Span& b) {
    return std::max<std::int64_t>(0, std::min(a.end, b.end) - std::max(a.begin, b.begin));
}

/// 0 if they touch.
std::int64_t Gap(const Span& a, const Span& b) {
    return std::max<std::int64_t>(0, std::max(a.begin, b.begin) - std::min(a.end, b.end));
}

bool IsReachable(const QRect& frame, const QRect& screen) {
    const Span across = Horizontal(frame);
    const Span down = Vertical(frame);
    if (across.Length() < SmallestSize || across.Length() > screen.width()) return false;
    if (down.Length() < SmallestSize || down.Length() > screen.height()) return false;
    return Overlap(across, Horizontal(screen)) >= std::min<std::int64_t>(GripWidth, across.Length()) &&
           down.begin >= screen.top() && down.begin + GripHeight <= Vertical(screen).end;
}

/// The screen on which most of \a frame is, else the one that is nearest to it, of several the first.
QRect NearestScreen(const QRect& frame, const std::vector<QRect>& screens) {
    const auto rank = [&frame](const QRect& screen) {
        const double area = double(Overlap(Horizontal(frame), Horizontal(screen))) *
                            double(Overlap(Vertical(frame), Vertical(screen)));
        const std::int64_t distance =
            Gap(Horizontal(frame), Horizontal(screen)) + Gap(Vertical(frame), Vertical(screen));
        return std::make_pair(-area, distance);
    };
    return *std::min_element(screens.begin(), screens.end(),
                             [&rank](const QRect& a, const QRect& b) { return rank(a) < rank(b); });
}

Span Into(const Span& screen, const Span& frame) {
    const std::int64_t length = qBound<std::int64_t>(SmallestSize, frame.Length(), screen.Length());
    const std::int64_t begin = qBound(screen.begin, frame.begin, screen.end - length);
    return {begin, begin + length};
}

std::vector<QRect> FreeScreens() {
    std::vector<QRect> screens;
    for (const QScreen* const screen : QGuiApplication::screens())  // the primary one first
        screens.push_back(screen->availableGeometry());
    return screens;
}

/// What the window system adds around \a window; an estimate until it has.
QSize Decoration(const QWidget& window) {
    const QSize known = window.frameGeometry().size() - window.geometry().size();
    if (window.isVisible() || window.windowFlags().testFlag(Qt::FramelessWindowHint)) return known;
    const QStyle& style = *window.style();
    const int title = style.pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window);
    const int borders = 2 * style.pixelMetric(QStyle::PM_MdiSubWindowFrameWidth, nullptr, &window);
    return known.expandedTo(QSize(borders, title + borders));
}

void Place(QWidget& window, const QRect& frame, const QSize& decoration) {
    const QSize size = frame.size() - decoration;
    window.move(frame.topLeft());
    window.resize(size);
    // A window that was made, but not shown, hears of it only then: too late if it is maximized by then.
    QWindow* const handle = window.windowHandle();
    if (handle == nullptr || window.isVisible()) return;
    handle->setFramePosition(frame.topLeft());
    handle->resize(size);
}

}  // namespace

QRect screenfit::Fitted(const QRect& frame, const std::vector<QRect>& screens) {
    if (screens.empty()) return frame;
    if (std::any_of(screens.begin(), screens.end(),
                    [&frame](const QRect& screen) { return IsReachable(frame, screen); }))
        return frame;
    const QRect screen = NearestScreen(frame, screens);
    const Span across = Into(Horizontal(screen), Horizontal(frame));
    const Span down = Into(Vertical(screen), Vertical(frame));
    return QRect(int(across.begin), int(down.begin), int(across.Length()), int(down.Length()));
}

void screenfit::BringOntoScreen(QWidget& window) {
    const Qt::WindowStates state = window.windowState();
    const QSize decoration = Decoration(window);
    const bool isUsual = !(state & Unusual);
    const QPoint position = isUsual ? window.pos() : window.normalGeometry().topLeft();
    // A window that is stored too small gets what it needs when it is shown.
    const QSize size =
        (isUsual ? window.size() : window.normalGeometry().size()).expandedTo(window.minimumSizeHint());
    const QRect frame(position, size + decoration);
    const QRect fitted = Fitted(frame, FreeScreens());
    if (fitted == frame) return;
    if (!isUsual) window.setWindowState(state & ~Unusual);
    Place(window, fitted, decoration);
    if (!isUsual) window.setWindowState(state);
}
