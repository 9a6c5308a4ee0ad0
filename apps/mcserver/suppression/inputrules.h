// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/frequencytext.h>

#include <devicecontrol/multichannelserver/common/gts/frequencyrange.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QString>

/// What the server's own page takes for an input. Each answers why it does not take a text, one line for
/// people; empty if it does.
class InputRules {
    Q_DECLARE_TR_FUNCTIONS(InputRules)

  public:
    static constexpr int MaxNameLength = 40;

    explicit InputRules(const FrequencyRange& range) : m_range(range) {}

    /// Any frequency of the device, in every way that people write one, into \a hz; nothing is none. A
    /// number without a unit counts as \a plain says.
    QString RefusalOfFrequency(const QString& text, FrequencyText::EPlainNumber plain, double* hz) const;
    QString RefusalOfName(const QString& text) const;
    QString RefusalOfAddress(const QString& text) const;

  private:
    FrequencyRange m_range;
};
