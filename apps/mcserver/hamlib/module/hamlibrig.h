// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcserver/hamlib/hamlibsettings.h>
#include <apps/mcserver/hamlib/irig.h>

#include <hamlib/rig.h>

/// A receiver by Hamlib. The thread of its worker, but for the constructor.
class HamlibRig : public IRig {
  public:
    /// What of \a settings concerns a single one; \a port is its own.
    HamlibRig(const HamlibSettings& settings, const QString& port);
    ~HamlibRig() override;
    HamlibRig(const HamlibRig&) = delete;
    HamlibRig& operator=(const HamlibRig&) = delete;

    RigOutcome Open() override;
    void Close() override;
    RigOutcome Tune(double hz) override;
    RigOutcome Read(RigReading* reading) override;
    std::vector<RigRange> GetRanges() const override { return m_ranges; }
    double GetBandwidth() const override { return m_bandwidth; }

  private:
    RigOutcome Configure();
    RigOutcome SetConf(const char* name, const QString& value);
    void NoteWhatItReceives();

    const HamlibSettings m_settings;
    const QString m_port;
    RIG* m_rig = nullptr;  ///< null while closed
    std::vector<RigRange> m_ranges;
    double m_bandwidth = 0.0;
};
