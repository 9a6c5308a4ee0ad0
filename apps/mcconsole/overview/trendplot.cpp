// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/overview/trendplot.h>

#include <apps/mcconsole/session/situation.h>
#include <apps/pages/severitylook.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>

#include <platform/values/valuenumeric.h>

#include <qwt_plot_curve.h>
#include <qwt_text.h>

#include <QtCore/QEvent>
#include <QtCore/QLocale>

#include <algorithm>

namespace {

constexpr int DrawEvery = 5;  // samples: ten minutes of them do not look different after one
constexpr double SecondsPerMinute = 60;
constexpr double ShownMinutes = 10;
constexpr double MicrosecondsPerMillisecond = 1000;
constexpr double Headroom = 1.1;  // above the highest sample

}  // namespace

TrendPlot::TrendPlot(const Situation& situation, QWidget* parent)
    : QwtPlot(parent),
      m_situation(situation),
      m_sweepTime(*this, [](const values::ValueBase&) { return true; }),
      m_drawn(*this, [this] { Draw(); }) {
    setObjectName(QStringLiteral("Trend"));
    setAccessibleName(tr("Sweep time and round trip over the last ten minutes"));
    setAutoReplot(false);
    enableAxis(yRight, true);
    setAxisMaxMajor(yLeft, 3);
    setAxisMaxMajor(yRight, 3);
    setAxisMaxMajor(xBottom, 5);
    setAxisScale(xBottom, -ShownMinutes, 0);
    connect(&situation, &Situation::Ticked, this, &TrendPlot::Sample);
    m_sweepTime.SetPath(
        mcskeys::Join(mcskeys::Join(situation.GetBasePath(), mcskeys::Status), mcskeys::SweepTime));
    Draw();
}

TrendPlot::~TrendPlot() = default;

QSize TrendPlot::sizeHint() const {
    return minimumSizeHint();
}

QSize TrendPlot::minimumSizeHint() const {
    constexpr int lines = 4;
    constexpr int characters = 36;
    return QSize(characters * fontMetrics().averageCharWidth(), lines * fontMetrics().lineSpacing());
}

std::optional<double> TrendPlot::SweepTimeMs() const {
    if (m_sweepTime.GetState() != EBindingState::Live) return std::nullopt;
    const auto* const value = dynamic_cast<const values::ValueNumeric<int>*>(m_sweepTime.GetValue());
    if (value == nullptr || value->GetValue() <= 0) return std::nullopt;
    return value->GetValue() / MicrosecondsPerMillisecond;
}

void TrendPlot::Sample() {
    using Milliseconds = std::chrono::duration<double, std::milli>;
    const Connection& connection = m_situation.GetConnection();
    TrendRing::Sample sample;
    if (connection.state == ConsoleSession::EState::Connected) {
        sample.sweepTimeMs = SweepTimeMs();
        if (connection.latency) sample.latencyMs = Milliseconds(*connection.latency).count();
    }
    m_ring.Add(sample);
    ++m_undrawn;
    if (!m_drawn.IsSeen() || m_undrawn >= DrawEvery) m_drawn.Refresh();
}

/// Where nothing was known, the line has a gap.
template <class Part>
TrendPlot::Runs TrendPlot::RunsOf(Part part) const {
    Runs runs(1);
    for (std::size_t i = m_ring.Count(); i-- > 0;) {
        const std::optional<double> number = m_ring.Get(i).*part;
        if (number)
            runs.back() += QPointF(-static_cast<double>(i) / SecondsPerMinute, *number);
        else if (!runs.back().isEmpty())
            runs.emplace_back();
    }
    return runs;
}

void TrendPlot::DrawCurve(std::vector<std::unique_ptr<QwtPlotCurve>>& curves, const Runs& runs, int axis,
                          Qt::PenStyle style) {
    double highest = 1;
    curves.clear();
    for (const QVector<QPointF>& run : runs) {
        for (const QPointF& point : run)
            highest = std::max(highest, point.y());
        auto curve = std::make_unique<QwtPlotCurve>();
        curve->setYAxis(axis);
        curve->setPen(palette().color(QPalette::WindowText), 1, style);
        curve->setSamples(run);
        curve->attach(this);
        curves.push_back(std::move(curve));
    }
    setAxisScale(axis, 0, highest * Headroom);
}

void TrendPlot::Draw() {
    m_undrawn = 0;
    setCanvasBackground(palette().color(QPalette::Base));
    DrawCurve(m_sweepCurves, RunsOf(&TrendRing::Sample::sweepTimeMs), yLeft, Qt::SolidLine);
    DrawCurve(m_latencyCurves, RunsOf(&TrendRing::Sample::latencyMs), yRight, Qt::DotLine);
    replot();
}

void TrendPlot::changeEvent(QEvent* event) {
    QwtPlot::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) Draw();
}
