// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/overview/drawnmark.h>

#include <apps/pages/severitylook.h>

#include <qwt_plot.h>

namespace {

using EMark = FrequencyMark::EKind;

constexpr double HertzOfAMegahertz = 1e6;
constexpr int ZoneWidth = 4;  // pixels to both sides

bool IsZone(EMark kind) {
    return kind == EMark::Keyed || kind == EMark::Unsupervised;
}

bool IsImportant(EMark kind) {
    return kind == EMark::Own || kind == EMark::Master;
}

QColor MarkColour(EMark kind, const QPalette& palette) {
    switch (kind) {
        case EMark::Own:
            return severitylook::Colour(ESeverity::Ok, palette);
        case EMark::Keyed:
            return severitylook::Colour(ESeverity::Act, palette);
        case EMark::Unsupervised:
            return severitylook::Colour(ESeverity::Look, palette);
        case EMark::Wanted:
            return severitylook::Colour(ESeverity::Unknown, palette);
        case EMark::Master:
        case EMark::User:
            break;
    }
    return palette.color(QPalette::WindowText);
}

}  // namespace

DrawnMark::DrawnMark(const FrequencyMark& mark, QwtPlot& plot)
    : m_kind(mark.kind), m_mhz(mark.hz / HertzOfAMegahertz) {
    m_line.setLineStyle(QwtPlotMarker::VLine);
    m_line.setXValue(m_mhz);
    m_label.setText(mark.label, QwtText::PlainText);
    m_text.setXValue(m_mhz);
    m_text.setZ(2);  // lines pass behind names
    m_line.setZ(1);
    m_line.attach(&plot);
    m_text.attach(&plot);
    // Beside the zone, its own or another one's there, which hid the first letter.
    m_text.setSpacing(ZoneWidth + m_text.spacing());
    if (IsZone(m_kind)) m_zone.attach(&plot);
}

void DrawnMark::ShowColours(ELineLook look, const QPalette& palette, QFont font) {
    const QColor colour =
        look == ELineLook::Veiled ? palette.color(QPalette::WindowText) : MarkColour(m_kind, palette);
    m_line.setLinePen(colour, IsImportant(m_kind) ? 2 : 1,
                      m_kind == EMark::Wanted ? Qt::DashLine : Qt::SolidLine);
    font.setBold(IsImportant(m_kind));
    m_label.setFont(font);
    m_label.setColor(colour);
    m_label.setBackgroundBrush(palette.color(QPalette::Base));
    m_zone.setPen(QPen(Qt::NoPen));
    m_zone.setBrush(QBrush(colour, m_kind == EMark::Unsupervised ? Qt::BDiagPattern : Qt::SolidPattern));
}

void DrawnMark::Place(const labelrows::Place& place, double y, double mhzPerPixel) {
    m_zone.setInterval(m_mhz - ZoneWidth * mhzPerPixel, m_mhz + ZoneWidth * mhzPerPixel);
    const bool isSeen = place.row != labelrows::Place::None;
    m_text.setLabel(isSeen ? m_label : QwtText());
    if (!isSeen) return;
    m_text.setLabelAlignment(Qt::AlignVCenter | (place.isLeft ? Qt::AlignLeft : Qt::AlignRight));
    m_text.setYValue(y);
}
