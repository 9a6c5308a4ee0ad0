// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>

#include <QtCore/QLatin1String>
#include <QtCore/QMap>
#include <QtCore/QString>

/// One named permission or role of a client of the server. Policies are equal, and ordered, by name. The ten
/// that exist are constants, registered by name at start-up; copies are not registered. Any thread.
///
/// The order by name puts capitals first: "MayBIT" comes before "MayBeJobMaster". (fixed: capitals-first)
class MCS_COMMON_EXPORT MCSPolicy {
  public:
    static const MCSPolicy ISSLAVETOMASTERJOB;
    static const MCSPolicy MAYALTERDEVICESETTINGS;
    static const MCSPolicy MAYALTERFREQRANGES;
    static const MCSPolicy MAYALTERFREQSINGLE;
    static const MCSPolicy MAYBEJOBMASTER;
    static const MCSPolicy MAYBIT;
    static const MCSPolicy MAYCAL;
    static const MCSPolicy MAYREADSINGLEFREQFROMMASTERRANGES;
    static const MCSPolicy MAYRESTARTJOB;
    static const MCSPolicy SEESMASTERJOBRF;

    /// All registered policies, in name order.
    static QMap<QString, MCSPolicy*> s_NameMCSPolicyMap;

    MCSPolicy(const MCSPolicy&) = default;
    MCSPolicy(MCSPolicy&&) = default;
    MCSPolicy& operator=(const MCSPolicy&) = default;
    MCSPolicy& operator=(MCSPolicy&&) = default;
    ~MCSPolicy() = default;

    QString GetName() const { return m_name; }  ///< As the configuration and the tree call it.
    /// The registered policy of exactly that name, or null.
    static MCSPolicy* PolicyByName(const QString& name);

    friend bool operator<(const MCSPolicy& a, const MCSPolicy& b) { return a.m_name < b.m_name; }
    friend bool operator==(const MCSPolicy& a, const MCSPolicy& b) { return a.m_name == b.m_name; }
    friend bool operator!=(const MCSPolicy& a, const MCSPolicy& b) { return a.m_name != b.m_name; }

  private:
    /// Registers the policy, in place of an earlier one of that name.
    explicit MCSPolicy(const QString& name);

    QString m_name;
};
