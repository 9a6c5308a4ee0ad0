// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <vector>

/// How far a step leads from one channel to the next.
class FrequencyStep {
  public:
    /// Those that operators choose from, in the order of their size.
    static const std::vector<FrequencyStep>& All();
    /// Which of them is the usual one.
    static int UsualIndex();

    /// "8.33 kHz", in the locale.
    QString Caption() const;
    /// \a hz and \a count steps, down if that is negative.
    double From(double hz, int count) const;

  private:
    FrequencyStep(int hz, int parts) : m_hz(hz), m_parts(parts) {}
    double Raster(double index) const { return index * m_hz / m_parts; }

    int m_hz;     ///< that are divided
    int m_parts;  ///< into so many steps
};
