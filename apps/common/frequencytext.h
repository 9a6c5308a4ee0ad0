// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// A frequency as people type it: a number, alone or with Hz, kHz, MHz, GHz, k, M or G. Comma and point both
/// are the decimal point; blanks may group digits by three; an exponent may follow ("1.215e8"). What is
/// doubtful is no frequency: nobody is to be tuned to a guess.
class FrequencyText {
  public:
    /// What a number without a unit counts.
    enum class EPlainNumber {
        Hertz,
        Megahertz,        ///< as files have it: MHz whatever it is; whole hertz
        MegahertzOrHertz  ///< as operators type it: MHz up to MostPlainMegahertz, hertz above it; whole hertz
    };
    enum class EProblem {
        None,
        Empty,
        NoFrequency,
        Negative,
        TooGreat  ///< for a number
    };

    /// No receiver is tuned beyond 30 GHz, nor to less than 30 kHz.
    static constexpr double MostPlainMegahertz = 30000;

    FrequencyText(const QString& text, EPlainNumber plain);

    EProblem GetProblem() const { return m_problem; }
    bool IsFrequency() const { return m_problem == EProblem::None; }
    /// 0 while the text is no frequency.
    double GetHz() const { return m_hz; }

    /// The frequency \a hz as operators read it: in MHz, without the unit, with as many digits as it has and
    /// at least \a leastDecimals of them behind the decimal point of the locale.
    static QString InMegahertz(double hz, int leastDecimals = 3);

  private:
    void ReadNumber(const QString& number);

    EProblem m_problem = EProblem::None;
    double m_hz = 0;
};
