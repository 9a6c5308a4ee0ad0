// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/observation.h>
#include <platform/values/value.h>
#include <platform/values/valuenumeric.h>

#include <QtCore/QString>

class IClock;

/// "Master" in the server's status: who is job master, since when, and what it receives, for those who cannot
/// look at every MpxORV. Main thread; needs the tree.
class MasterFacts : private IObserver {
  public:
    MasterFacts();

    /// \a name is job master from now on; empty: nobody is.
    void Show(const QString& name, const IClock& clock);
    /// The master receives \a bandwidth Hz around \a hz; with 0 for \a hz nothing.
    void ShowRange(double hz, double bandwidth);

  private:
    using Frequency = values::ValueNumeric<double>;

    void Update(Observable* source, TChangeCode code) override;

    Observation<values::Value<QString>> m_pName;
    Observation<values::Value<QString>> m_pSince;
    Observation<Frequency> m_pRangeFrom;
    Observation<Frequency> m_pRangeTo;
};
