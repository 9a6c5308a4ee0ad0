// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/overview/frequencymark.h>
#include <apps/mcconsole/overview/labelrows.h>
#include <apps/mcconsole/overview/linelook.h>

#include <qwt_plot_marker.h>
#include <qwt_plot_zoneitem.h>
#include <qwt_text.h>

#include <QtGui/QFont>
#include <QtGui/QPalette>

class QwtPlot;

/// One mark on a plot whose x axis is in MHz: a line, a label beside it at a height of its own, and a narrow
/// band where transmitters are. GUI thread.
class DrawnMark {
  public:
    /// \a plot is not owned and outlives the mark.
    DrawnMark(const FrequencyMark& mark, QwtPlot& plot);

    void ShowColours(ELineLook look, const QPalette& palette, QFont font);
    double LabelWidth() const { return m_label.textSize().width() + m_text.spacing(); }
    /// \a y is the height for a label that is seen; \a mhzPerPixel is how much of the axis a pixel is.
    void Place(const labelrows::Place& place, double y, double mhzPerPixel);

  private:
    FrequencyMark::EKind m_kind;
    double m_mhz;
    QwtPlotMarker m_line;
    QwtPlotMarker m_text;
    QwtPlotZoneItem m_zone;
    QwtText m_label;
};
