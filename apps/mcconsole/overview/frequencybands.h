// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/overview/frequencyband.h>
#include <apps/mcconsole/overview/linelook.h>

#include <QtGui/QFont>
#include <QtGui/QPalette>

#include <memory>
#include <vector>

class QwtPlot;

/// Bands behind the marks of a plot whose x axis is in MHz and whose y axis goes from 0 to 1. GUI thread.
class FrequencyBands {
  public:
    /// \a plot is not owned and outlives the bands.
    explicit FrequencyBands(QwtPlot& plot);
    ~FrequencyBands();

    void Show(std::vector<FrequencyBand> bands);
    const std::vector<FrequencyBand>& Get() const { return m_bands; }
    void ShowColours(ELineLook look, const QPalette& palette, const QFont& font);
    /// Puts each label, along the lower edge, into what is seen of its band, if it has room there. Whether
    /// any has.
    bool PlaceLabels();
    /// What is said of the bands at \a hz, a line each.
    QString DetailAt(double hz) const;

  private:
    struct DrawnBand;

    QwtPlot& m_plot;
    std::vector<FrequencyBand> m_bands;
    std::vector<std::unique_ptr<DrawnBand>> m_drawn;
};
