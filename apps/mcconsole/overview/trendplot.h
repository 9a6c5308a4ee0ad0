// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/overview/trendring.h>
#include <apps/pages/whenseen.h>

#include <platform/values/pathbinding.h>

#include <qwt_plot.h>

#include <QtCore/QPointF>
#include <QtCore/QVector>

#include <memory>
#include <vector>

class QwtPlotCurve;
class Situation;

/// The sweep time of the device and the round trip to the server over the last ten minutes, as far as this
/// console has seen them. Drawn now and then, and not at all while it is hidden. GUI thread.
class TrendPlot : public QwtPlot, private PathBinding::IListener {
    Q_OBJECT

  public:
    /// \a situation is not owned and outlives the plot.
    explicit TrendPlot(const Situation& situation, QWidget* parent = nullptr);
    ~TrendPlot() override;

    const TrendRing& GetRing() const { return m_ring; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void changeEvent(QEvent* event) override;

  private:
    using Runs = std::vector<QVector<QPointF>>;

    void OnBindingChanged(PathBinding&, TChangeCode) override {}
    void Sample();
    void Draw();
    void DrawCurve(std::vector<std::unique_ptr<QwtPlotCurve>>& curves, const Runs& runs, int axis,
                   Qt::PenStyle style);
    template <class Part>
    Runs RunsOf(Part part) const;
    std::optional<double> SweepTimeMs() const;

    const Situation& m_situation;
    PathBinding m_sweepTime;
    TrendRing m_ring;
    int m_undrawn = 0;  ///< samples
    WhenSeen m_drawn;
    std::vector<std::unique_ptr<QwtPlotCurve>> m_sweepCurves;
    std::vector<std::unique_ptr<QwtPlotCurve>> m_latencyCurves;
};
