// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/tune/frequencystep.h>

#include <QtCore/QLocale>

#include <cmath>

const std::vector<FrequencyStep>& FrequencyStep::All() {
    // "8.33 kHz" are the third part of 25 kHz: three of them lead to a channel of the wider raster.
    static const auto& all = *new std::vector<FrequencyStep>{
        FrequencyStep(5000, 1), FrequencyStep(25000, 3), FrequencyStep(25000, 1), FrequencyStep(100000, 1),
        FrequencyStep(1000000, 1)};
    return all;
}

int FrequencyStep::UsualIndex() {
    return 2;
}

QString FrequencyStep::Caption() const {
    constexpr double HzPerKilohertz = 1e3;
    constexpr double HzPerMegahertz = 1e6;
    const double hz = Raster(1);
    if (hz >= HzPerMegahertz) return QStringLiteral("%1 MHz").arg(QLocale().toString(hz / HzPerMegahertz));
    const int decimals = m_parts == 1 ? 0 : 2;
    return QStringLiteral("%1 kHz").arg(QLocale().toString(hz / HzPerKilohertz, 'f', decimals));
}

double FrequencyStep::From(double hz, int count) const {
    if (m_parts == 1) return hz + Raster(count);
    // Channels are whole hertz: added up, what was rounded off would lead away from them.
    const double index = std::round(hz * m_parts / m_hz);
    const bool isChannel = std::round(Raster(index)) == hz;
    return std::round(isChannel ? Raster(index + count) : hz + Raster(count));
}
