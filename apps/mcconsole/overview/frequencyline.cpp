// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/overview/frequencyline.h>

#include <apps/mcconsole/overview/fittedrange.h>
#include <apps/mcconsole/overview/labelrows.h>

#include <platform/widgets/stalemark.h>

#include <qwt_plot_canvas.h>
#include <qwt_plot_panner.h>
#include <qwt_scale_div.h>
#include <qwt_scale_map.h>

#include <QtCore/QEvent>
#include <QtGui/QHelpEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QTextDocument>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double Megahertz = 1e6;
constexpr double LowestShown = 0;       // MHz
constexpr double HighestShown = 30000;  // MHz: no receiver is tuned beyond
constexpr double LeastSpan = 0.05;      // MHz
constexpr double ZoomStep = 0.8;        // of one notch of the wheel
constexpr int Reach = 6;                // pixels around a mark that count as it
constexpr int MostRows = 6;
constexpr double ClickStep = 25000;  // Hz: whoever clicks means a channel

QString StaleText() {
    return FrequencyLine::tr("The connection is lost: this is what was last known.");
}

}  // namespace

FrequencyLine::FrequencyLine(QWidget* parent) : QwtPlot(parent), m_bands(*this) {
    setObjectName(QStringLiteral("FrequencyLine"));
    setAutoReplot(false);
    enableAxis(yLeft, false);
    setAxisScale(yLeft, 0, 1);
    setFocusPolicy(Qt::StrongFocus);
    // The canvas is the plot's own.
    canvas()->installEventFilter(this);
    canvas()->setCursor(Qt::ArrowCursor);
    auto* const panner = new QwtPlotPanner(canvas());
    panner->setAxisEnabled(yLeft, false);
    panner->setOrientations(Qt::Horizontal);
    connect(panner, &QwtPanner::panned, this, [this] { m_showsAll = false; });
    setAccessibleName(tr("Frequencies in use"));
    ShowColours();
    Fit();
    replot();
}

FrequencyLine::~FrequencyLine() = default;

QSize FrequencyLine::sizeHint() const {
    return minimumSizeHint();
}

QSize FrequencyLine::minimumSizeHint() const {
    constexpr int lines = 4;  // of text, one of them the scale's
    constexpr int characters = 40;
    return QSize(characters * fontMetrics().averageCharWidth(), lines * fontMetrics().lineSpacing());
}

void FrequencyLine::ShowMarks(std::vector<FrequencyMark> marks) {
    if (marks == m_marks) return;
    m_marks = std::move(marks);
    m_drawn.clear();
    for (const FrequencyMark& mark : m_marks)
        m_drawn.push_back(std::make_unique<DrawnMark>(mark, *this));
    ShowOther();
}

void FrequencyLine::ShowBands(std::vector<FrequencyBand> bands) {
    if (bands == m_bands.Get()) return;
    m_bands.Show(std::move(bands));
    ShowOther();
}

void FrequencyLine::ShowStale(bool isStale) {
    if (std::exchange(m_isStale, isStale) == isStale) return;
    (isStale ? stalemark::Set : stalemark::Clear)(*canvas());  // the scale below holds in any case
    ShowOther();
}

void FrequencyLine::ShowOther() {
    ShowColours();
    if (m_showsAll) Fit();
    setAccessibleDescription(Summary());
    replot();
}

QString FrequencyLine::Summary() const {
    QStringList lines;
    if (m_isStale) lines += StaleText();
    for (const FrequencyBand& band : m_bands.Get())
        lines += band.detail;
    for (const FrequencyMark& mark : m_marks)
        lines += mark.detail;
    return lines.join(QLatin1Char('\n'));
}

/// By the frame: it takes keys, and says so.
void FrequencyLine::ShowFocus() {
    auto* const frame = static_cast<QwtPlotCanvas*>(canvas());
    QPalette colours = frame->palette();
    colours.setColor(QPalette::WindowText, palette().color(QPalette::Highlight));
    frame->setPalette(colours);
    colours.setColor(QPalette::WindowText, palette().color(QPalette::WindowText));
    for (QWidget* const above : frame->findChildren<QWidget*>())
        above->setPalette(colours);
    frame->setFrameShape(hasFocus() ? QFrame::Box : QFrame::Panel);
    frame->setFrameShadow(hasFocus() ? QFrame::Plain : QFrame::Sunken);
    frame->invalidateBackingStore();  // which has the frame of before
}

void FrequencyLine::focusInEvent(QFocusEvent* event) {
    QwtPlot::focusInEvent(event);
    ShowFocus();
}

void FrequencyLine::focusOutEvent(QFocusEvent* event) {
    QwtPlot::focusOutEvent(event);
    ShowFocus();
}

void FrequencyLine::ShowColours() {
    setCanvasBackground(palette().color(QPalette::Base));
    ShowFocus();
    const ELineLook look = m_isStale ? ELineLook::Veiled : ELineLook::Live;
    m_bands.ShowColours(look, palette(), font());
    for (const std::unique_ptr<DrawnMark>& drawn : m_drawn)
        drawn->ShowColours(look, palette(), font());
}

void FrequencyLine::changeEvent(QEvent* event) {
    QwtPlot::changeEvent(event);
    if (event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange) return;
    ShowColours();
    replot();
}

void FrequencyLine::resizeEvent(QResizeEvent* event) {
    QwtPlot::resizeEvent(event);
    replot();
}

void FrequencyLine::replot() {
    updateAxes();
    PlaceLabels();
    QwtPlot::replot();
}

double FrequencyLine::PixelOf(double hz) const {
    return canvasMap(xBottom).transform(hz / Megahertz);
}

/// Those of the marks from the upper edge on; along the lower one are those of the bands.
void FrequencyLine::PlaceLabels() {
    const double whole = canvas()->contentsRect().height();
    const double height = m_bands.PlaceLabels() ? whole - fontMetrics().height() : whole;
    const int rows = std::clamp(static_cast<int>(height / (fontMetrics().height() + 2)), 1, MostRows);
    std::vector<labelrows::Label> labels;
    for (std::size_t i = 0; i < m_drawn.size(); ++i)
        labels.push_back({PixelOf(m_marks[i].hz), m_drawn[i]->LabelWidth()});
    const std::vector<labelrows::Place> places =
        labelrows::Assign(labels, canvas()->contentsRect().width(), rows);
    const double mhzPerPixel = 1 / std::abs(canvasMap(xBottom).pDist() / canvasMap(xBottom).sDist());
    for (std::size_t i = 0; i < m_drawn.size(); ++i)
        m_drawn[i]->Place(places[i], 1 - (places[i].row + 0.5) / rows * height / whole, mhzPerPixel);
}

void FrequencyLine::Fit() {
    const fittedrange::Range range = fittedrange::Of(m_marks, m_bands.Get());
    SetRange(range.lowest, range.highest);
}

void FrequencyLine::SetRange(double lowest, double highest) {
    const double span = std::clamp(highest - lowest, LeastSpan, HighestShown - LowestShown);
    const double begin = std::clamp(lowest, LowestShown, HighestShown - span);
    setAxisScale(xBottom, begin, begin + span);
}

void FrequencyLine::ShowAll() {
    m_showsAll = true;
    Fit();
    replot();
}

void FrequencyLine::Zoom(double factor, double mhz) {
    const QwtInterval shown = axisInterval(xBottom);
    m_showsAll = false;
    SetRange(mhz - (mhz - shown.minValue()) * factor, mhz + (shown.maxValue() - mhz) * factor);
    replot();
}

void FrequencyLine::Move(double share) {
    const QwtInterval shown = axisInterval(xBottom);
    const double way = share * shown.width();
    m_showsAll = false;
    SetRange(shown.minValue() + way, shown.maxValue() + way);
    replot();
}

const FrequencyMark* FrequencyLine::NearestTo(int x) const {
    const FrequencyMark* nearest = nullptr;
    for (const FrequencyMark& mark : m_marks) {
        const double distance = std::abs(PixelOf(mark.hz) - x);
        if (distance <= Reach && (nearest == nullptr || distance < std::abs(PixelOf(nearest->hz) - x)))
            nearest = &mark;
    }
    return nearest;
}

/// That of a mark, or else a channel of which several may lie on one pixel: the roundest of those.
double FrequencyLine::FrequencyAt(int x) const {
    if (const FrequencyMark* const mark = NearestTo(x)) return mark->hz;
    const double hz = invTransform(xBottom, x) * Megahertz;
    const double pixel = std::abs(invTransform(xBottom, x + 1) * Megahertz - hz);
    double step = ClickStep;
    while (step < pixel)
        step *= 2;
    return std::round(hz / step) * step;  // whole hertz, and no others
}

QString FrequencyLine::DetailAt(const QPoint& position) const {
    const FrequencyMark* const nearest = NearestTo(position.x());
    QStringList details;
    for (const FrequencyMark& mark : m_marks)
        if (nearest != nullptr && mark.hz == nearest->hz) details += mark.detail;
    if (nearest == nullptr) details += m_bands.DetailAt(invTransform(xBottom, position.x()) * Megahertz);
    details.removeAll(QString());
    if (m_isStale && !details.isEmpty()) details += StaleText();
    return details.join(QLatin1Char('\n'));
}

bool FrequencyLine::eventFilter(QObject* watched, QEvent* event) {
    if (watched != canvas()) return QwtPlot::eventFilter(watched, event);
    switch (event->type()) {
        case QEvent::Wheel: {
            const auto* const wheel = static_cast<QWheelEvent*>(event);
            const double notches = wheel->angleDelta().y() / 120.0;
            Zoom(std::pow(ZoomStep, notches), invTransform(xBottom, wheel->position().toPoint().x()));
            event->accept();
            return true;
        }
        case QEvent::MouseButtonPress:
            if (static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
                m_pressed = static_cast<QMouseEvent*>(event)->pos();
            break;
        case QEvent::MouseButtonRelease: {
            const QPoint place = static_cast<QMouseEvent*>(event)->pos();
            const std::optional<QPoint> pressed = std::exchange(m_pressed, std::nullopt);
            const bool isClick =
                pressed && (place - *pressed).manhattanLength() < QApplication::startDragDistance();
            if (isClick) Q_EMIT Chosen(FrequencyAt(place.x()));
            break;
        }
        case QEvent::ToolTip: {
            const auto* const help = static_cast<QHelpEvent*>(event);
            const QString detail = DetailAt(help->pos());
            const QString rich = Qt::convertFromPlainText(detail, Qt::WhiteSpaceNormal);
            QToolTip::showText(help->globalPos(), detail.isEmpty() ? toolTip() : rich, canvas());
            return true;
        }
        default:
            break;
    }
    return QwtPlot::eventFilter(watched, event);
}

void FrequencyLine::keyPressEvent(QKeyEvent* event) {
    constexpr double share = 0.1;
    const QwtInterval shown = axisInterval(xBottom);
    const double middle = (shown.minValue() + shown.maxValue()) / 2;
    switch (event->key()) {
        case Qt::Key_Plus:
            return Zoom(ZoomStep, middle);
        case Qt::Key_Minus:
            return Zoom(1 / ZoomStep, middle);
        case Qt::Key_Left:
            return Move(-share);
        case Qt::Key_Right:
            return Move(share);
        case Qt::Key_Home:
            return ShowAll();
        default:
            return QwtPlot::keyPressEvent(event);
    }
}
