// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/suppression/keyingtimeline.h>

#include <apps/pages/severitylook.h>

#include <QtCore/QDateTime>
#include <QtCore/QEvent>
#include <QtWidgets/QButtonGroup>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QVBoxLayout>

#include <qwt_date.h>
#include <qwt_date_scale_draw.h>
#include <qwt_date_scale_engine.h>
#include <qwt_interval_symbol.h>
#include <qwt_plot.h>
#include <qwt_plot_intervalcurve.h>
#include <qwt_scale_draw.h>
#include <qwt_text.h>

namespace {

constexpr int LaneHeight = 22;
constexpr int AxisHeight = 50;
constexpr std::chrono::milliseconds Soon(250);
constexpr int Steps = 300;  // into which a range is cut: what the eye tells apart

/// Names in place of numbers.
class LaneNames : public QwtScaleDraw {
  public:
    explicit LaneNames(const std::vector<KeyingTimeline::Lane>& lanes) : m_lanes(lanes) {}
    QwtText label(double value) const override {
        const auto lane = static_cast<std::size_t>(value + 0.5);
        return QwtText(lane < m_lanes.size() ? m_lanes[lane].name : QString(), QwtText::PlainText);
    }

  private:
    const std::vector<KeyingTimeline::Lane>& m_lanes;
};

QwtPlotIntervalCurve* AddCurve(QwtPlot& plot) {
    auto* const curve = new QwtPlotIntervalCurve;
    curve->setOrientation(Qt::Horizontal);
    curve->setStyle(QwtPlotIntervalCurve::NoCurve);
    curve->attach(&plot);
    return curve;
}

QwtIntervalSymbol* NewBox(const QColor& colour, Qt::BrushStyle style) {
    auto* const symbol = new QwtIntervalSymbol(QwtIntervalSymbol::Box);
    symbol->setWidth(LaneHeight / 2);
    symbol->setBrush(QBrush(colour, style));
    symbol->setPen(QPen(colour));
    return symbol;
}

}  // namespace

KeyingTimeline::KeyingTimeline(const IKeyingHistory& history, QWidget* parent)
    : QWidget(parent),
      m_history(history),
      m_plot(new QwtPlot(this)),
      m_keyed(AddCurve(*m_plot)),
      m_unknown(AddCurve(*m_plot)),
      m_ranges(new QButtonGroup(this)),
      m_drawn(*this, [this] { Draw(); }) {
    m_plot->setObjectName(QStringLiteral("KeyingTimeline"));
    m_plot->setAccessibleName(tr("Timeline of the transmitters"));
    auto* const times = new QwtDateScaleDraw(Qt::LocalTime);
    for (const auto type : {QwtDate::Day, QwtDate::Hour, QwtDate::Minute})
        times->setDateFormat(type, QStringLiteral("HH:mm"));
    times->setDateFormat(QwtDate::Second, QStringLiteral("HH:mm:ss"));
    m_plot->setAxisScaleDraw(QwtPlot::xBottom, times);
    m_plot->setAxisFont(QwtPlot::xBottom, font());
    m_plot->setAxisFont(QwtPlot::yLeft, font());
    m_plot->setAxisScaleEngine(QwtPlot::xBottom, new QwtDateScaleEngine(Qt::LocalTime));
    m_plot->setAxisScaleDraw(QwtPlot::yLeft, new LaneNames(m_lanes));
    auto* const scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidget(m_plot);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(BuildRanges());
    layout->addWidget(scroll, 1);
    m_soon.setSingleShot(true);
    m_soon.setInterval(Soon);
    connect(&m_soon, &QTimer::timeout, &m_drawn, &WhenSeen::Refresh);
    connect(&m_tick, &QTimer::timeout, &m_drawn, &WhenSeen::Refresh);
    ApplyColours();
    SetRange(m_range);
}

KeyingTimeline::~KeyingTimeline() = default;

QWidget* KeyingTimeline::BuildRanges() {
    using namespace std::chrono_literals;
    auto* const row = new QWidget(this);
    auto* const layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    const std::pair<std::chrono::minutes, QString> ranges[] = {
        {10min, tr("10 min")}, {1h, tr("1 h")}, {24h, tr("24 h")}};
    for (const auto& [range, text] : ranges) {
        auto* const button = new QRadioButton(text, row);
        button->setChecked(range == m_range);
        button->setObjectName(QStringLiteral("Range%1").arg(range.count()));
        m_ranges->addButton(button);
        layout->addWidget(button);
        connect(button, &QRadioButton::toggled, this, [this, minutes = range](bool isOn) {
            if (isOn) SetRange(minutes);
        });
    }
    layout->addStretch();
    auto* const legend = new QLabel(tr("solid: keyed, hatched: not known, empty: silent"), row);
    layout->addWidget(legend);
    return row;
}

void KeyingTimeline::SetRange(std::chrono::minutes range) {
    m_range = range;
    m_tick.start(std::chrono::duration_cast<std::chrono::milliseconds>(range) / Steps);
    m_drawn.Refresh();
}

void KeyingTimeline::ShowLanes(const std::vector<Lane>& lanes) {
    if (lanes == m_lanes) return;
    m_lanes = lanes;
    const double count = static_cast<double>(m_lanes.size());
    QList<double> ticks;
    for (int i = 0; i < static_cast<int>(m_lanes.size()); ++i)
        ticks << i;
    // The first lane is the uppermost.
    m_plot->setAxisScaleDiv(QwtPlot::yLeft, QwtScaleDiv(count - 0.5, -0.5, {}, {}, ticks));
    m_plot->setAxisScaleDraw(QwtPlot::yLeft, new LaneNames(m_lanes));  // it remembers what it drew
    m_plot->setMinimumHeight(static_cast<int>(m_lanes.size()) * LaneHeight + AxisHeight);
    RefreshSoon();
}

void KeyingTimeline::RefreshSoon() {
    if (!m_drawn.IsSeen()) return m_drawn.Refresh();
    if (!m_soon.isActive()) m_soon.start();
}

void KeyingTimeline::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) ApplyColours();
}

void KeyingTimeline::ApplyColours() {
    m_plot->setCanvasBackground(palette().base());
    m_keyed->setSymbol(NewBox(severitylook::Colour(ESeverity::Act, palette()), Qt::SolidPattern));
    m_unknown->setSymbol(NewBox(severitylook::Colour(ESeverity::Stale, palette()), Qt::BDiagPattern));
    RefreshSoon();
}

void KeyingTimeline::Draw() {
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    const qint64 begin = now - std::chrono::duration_cast<std::chrono::milliseconds>(m_range).count();
    QVector<QwtIntervalSample> keyed;
    QVector<QwtIntervalSample> unknown;
    for (std::size_t lane = 0; lane < m_lanes.size(); ++lane)
        for (const KeyingSpan& span : m_history.GetSpans(m_lanes[lane].input, begin, now))
            (span.what == EKeying::Keyed ? keyed : unknown)
                .append(QwtIntervalSample(static_cast<double>(lane), static_cast<double>(span.beginMs),
                                          static_cast<double>(span.endMs)));
    m_keyed->setSamples(keyed);
    m_unknown->setSamples(unknown);
    m_plot->setAxisScale(QwtPlot::xBottom, static_cast<double>(begin), static_cast<double>(now));
    m_plot->replot();
}
