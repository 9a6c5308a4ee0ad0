// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/gts/frequencyrange.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QString>

/// What a text in the table of frequencies is taken for: a number of MHz, or nothing.
class FrequencyEntry {
    Q_DECLARE_TR_FUNCTIONS(FrequencyEntry)

  public:
    explicit FrequencyEntry(const QString& text);

    /// The text with points in place of commas.
    QString GetText() const { return m_text; }
    /// Hz; 0.0 for what is no number, not finite when the number is too great.
    double GetHz() const { return m_hz; }
    /// Whether it is neither a frequency nor nothing.
    bool IsWrong() const;
    /// Why it is doubtful and what will be taken, one line for people; empty if it is not.
    QString GetDoubt(const FrequencyRange& range) const;

  private:
    QString GetGuess(const FrequencyRange& range) const;

    QString m_text;
    bool m_isNumber = false;
    double m_megahertz = 0.0;
    double m_hz = 0.0;
};
