// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/overview/frequencybands.h>

#include <qwt_plot.h>
#include <qwt_plot_marker.h>
#include <qwt_plot_zoneitem.h>
#include <qwt_scale_map.h>
#include <qwt_text.h>

#include <QtCore/QStringList>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double HertzPerMegahertz = 1e6;
constexpr int BandOpacity = 48;  // of 255: what is in it stays readable

QBrush BandBrush(FrequencyBand::EKind kind, ELineLook look, const QPalette& palette) {
    QColor colour = palette.color(look == ELineLook::Veiled ? QPalette::WindowText : QPalette::Highlight);
    if (kind == FrequencyBand::EKind::Outside)
        return QBrush(palette.color(QPalette::Mid), Qt::DiagCrossPattern);
    colour.setAlpha(BandOpacity);
    return QBrush(colour);
}

}  // namespace

struct FrequencyBands::DrawnBand {
    QwtPlotZoneItem zone;
    QwtPlotMarker text;
    QwtText label;
};

FrequencyBands::FrequencyBands(QwtPlot& plot) : m_plot(plot) {}

FrequencyBands::~FrequencyBands() = default;

void FrequencyBands::Show(std::vector<FrequencyBand> bands) {
    m_bands = std::move(bands);
    m_drawn.clear();
    for (const FrequencyBand& band : m_bands) {
        auto drawn = std::make_unique<DrawnBand>();
        drawn->zone.setInterval(band.from / HertzPerMegahertz, band.to / HertzPerMegahertz);
        drawn->zone.setZ(0);  // behind all marks
        drawn->zone.attach(&m_plot);
        drawn->label.setText(band.label, QwtText::PlainText);
        drawn->text.setLabelAlignment(Qt::AlignTop | Qt::AlignRight);
        drawn->text.setYValue(0);
        drawn->text.setZ(2);
        drawn->text.attach(&m_plot);
        m_drawn.push_back(std::move(drawn));
    }
}

void FrequencyBands::ShowColours(ELineLook look, const QPalette& palette, const QFont& font) {
    for (std::size_t i = 0; i < m_drawn.size(); ++i) {
        m_drawn[i]->zone.setPen(QPen(Qt::NoPen));
        m_drawn[i]->zone.setBrush(BandBrush(m_bands[i].kind, look, palette));
        m_drawn[i]->label.setFont(font);
        m_drawn[i]->label.setColor(palette.color(QPalette::Text));
        m_drawn[i]->label.setBackgroundBrush(palette.color(QPalette::Base));
    }
}

bool FrequencyBands::PlaceLabels() {
    bool isAnySeen = false;
    constexpr double Gap = 4;  // pixels
    const QwtInterval seen = m_plot.axisInterval(QwtPlot::xBottom);
    const QwtScaleMap map = m_plot.canvasMap(QwtPlot::xBottom);
    for (std::size_t i = 0; i < m_drawn.size(); ++i) {
        const double from = std::max(m_bands[i].from / HertzPerMegahertz, seen.minValue());
        const double to = std::min(m_bands[i].to / HertzPerMegahertz, seen.maxValue());
        const double room = to > from ? map.transform(to) - map.transform(from) : 0;
        const bool fits = room > m_drawn[i]->label.textSize().width() + 2 * Gap;
        m_drawn[i]->text.setXValue(from);
        m_drawn[i]->text.setLabel(fits ? m_drawn[i]->label : QwtText());
        isAnySeen = isAnySeen || fits;
    }
    return isAnySeen;
}

QString FrequencyBands::DetailAt(double hz) const {
    QStringList details;
    for (const FrequencyBand& band : m_bands)
        if (hz >= band.from && hz <= band.to) details += band.detail;
    return details.join(QLatin1Char('\n'));
}
