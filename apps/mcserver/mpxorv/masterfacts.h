// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/observation.h>
#include <platform/values/value.h>

#include <QtCore/QString>

class IClock;

/// "Master" in the server's status: who is job master, and since when, for those who cannot look at every
/// MpxORV. Main thread; needs the tree.
class MasterFacts : private IObserver {
  public:
    MasterFacts();

    /// \a name is job master from now on; empty: nobody is.
    void Show(const QString& name, const IClock& clock);

  private:
    void Update(Observable* source, TChangeCode code) override;

    Observation<values::Value<QString>> m_pName;
    Observation<values::Value<QString>> m_pSince;
};
