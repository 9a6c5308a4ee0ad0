// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/suppression/ikeyinghistory.h>
#include <apps/pages/whenseen.h>

#include <QtCore/QString>
#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

#include <chrono>
#include <vector>

class QButtonGroup;
class QwtPlot;
class QwtPlotIntervalCurve;

/// What inputs did in the last minutes or hours, a lane each. GUI thread.
class KeyingTimeline : public QWidget {
    Q_OBJECT

  public:
    struct Lane {
        InputKey input;
        QString name;

        bool operator==(const Lane& other) const { return input == other.input && name == other.name; }
    };

    /// \a history is not owned, and outlives the timeline.
    explicit KeyingTimeline(const IKeyingHistory& history, QWidget* parent = nullptr);
    ~KeyingTimeline() override;

    void ShowLanes(const std::vector<Lane>& lanes);
    /// Something happened in a lane.
    void RefreshSoon();

  protected:
    void changeEvent(QEvent* event) override;

  private:
    QWidget* BuildRanges();
    void SetRange(std::chrono::minutes range);
    void ApplyColours();
    void Draw();

    const IKeyingHistory& m_history;
    QwtPlot* m_plot;
    QwtPlotIntervalCurve* m_keyed;  ///< the plot owns it, as the next
    QwtPlotIntervalCurve* m_unknown;
    QButtonGroup* m_ranges;
    std::chrono::minutes m_range{10};
    std::vector<Lane> m_lanes;
    QTimer m_tick;
    QTimer m_soon;
    WhenSeen m_drawn;
};
