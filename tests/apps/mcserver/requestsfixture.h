// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <tests/apps/mcserver/serverfixture.h>

constexpr const char* AllPolicies[] = {"IsSlaveToMasterJob",
                                       "MayAlterDeviceSettings",
                                       "MayAlterFreqRanges",
                                       "MayAlterFreqSingle",
                                       "MayBeJobMaster",
                                       "MayBIT",
                                       "MayCal",
                                       "MayReadSingleFreqFromMasterRanges",
                                       "MayRestartJob",
                                       "SeesMasterJobRf"};

/// A server with one client, which has an MpxORV.
class RequestsTest : public ServerTest {
  protected:
    RequestsTest() {
        Start();
        m_peer = Connect(QStringLiteral("Receiver"));
        Use(m_peer, m_name);
        TakeLog();
    }
    /// Lets the MpxORV have exactly these policies.
    void HaveOnly(const QString& mpxOrv, const QStringList& policies) {
        for (const char* const policy : AllPolicies)
            Set(Dynamic(mpxOrv, QStringLiteral("Policy/") + QLatin1String(policy)),
                policies.contains(QLatin1String(policy)));
    }
    QString Request(const QString& mpxOrv, const QString& request) {
        if (request == QLatin1String("Frequency")) {
            EXPECT_EQ(Tune(m_peer, mpxOrv, 145e6), QString());
        } else if (request == QLatin1String("ReportInterval")) {
            SelectInterval(mpxOrv, 1000);
        } else {
            EXPECT_EQ(Push(m_peer, mpxOrv, request), QString());
            EXPECT_FALSE(Flag(Dynamic(mpxOrv, QStringLiteral("Request/") + request)));
        }
        return Answer(mpxOrv);
    }
    void SelectInterval(const QString& mpxOrv, long key) {
        const QString path = IntervalPath(mpxOrv);
        EXPECT_TRUE(m_access->MayWrite(m_peer, path, nullptr));
        values::FindValue<values::ValueSelection>(path, nullptr, nullptr)->Select(key);
    }
    static QString IntervalPath(const QString& mpxOrv) {
        return Dynamic(mpxOrv, QStringLiteral("Request/DeviceSetting/ReportInterval"));
    }
    /// Another MpxORV, of another client, that may do anything.
    VtPeer OtherMpxOrv(const QString& name) {
        VtPeer peer = Connect(QStringLiteral("Console"));
        Use(peer, name);
        for (const char* const policy : AllPolicies)
            Set(Dynamic(name, QStringLiteral("Policy/") + QLatin1String(policy)),
                QLatin1String(policy) != QLatin1String("IsSlaveToMasterJob"));
        return peer;
    }

    VtPeer m_peer;
    const QString m_name = QStringLiteral("MpxORVhostA_receiver");
    const QString m_other = QStringLiteral("MpxORVhostB_console");
};
