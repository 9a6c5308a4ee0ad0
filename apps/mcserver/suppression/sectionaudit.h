// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/codedtext.h>

#include <devicecontrol/multichannelserver/common/gts/modulesettings.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <map>
#include <vector>

class ICfg;

/// Compares what stands in the section of the suppression with what is taken from it. The section is read
/// without a word about what cannot be used there, which would leave transmitters unsupervised unnoticed.
class SectionAudit {
  public:
    static constexpr std::size_t MaxFaults = 16;  ///< that are told one by one
    static constexpr int MaxNamed = 8;            ///< keys in one of them

    /// \a taken is what the plant makes of \a section.
    SectionAudit(ICfg& section, const std::vector<ModuleSettings>& taken);

    /// What was not taken, or otherwise than it stands there: events, the gravest first.
    const std::vector<CodedText>& GetFaults() const { return m_faults; }
    /// Whether something of that is written over when the server ends.
    bool IsToBeWrittenOver() const { return m_isToBeWrittenOver; }

  private:
    using Keys = std::map<QString, QString>;

    void Sort(const QString& key, const QString& content);
    void LookAtModules(const std::vector<ModuleSettings>& taken);
    void LookAtCount(int count);
    void LookAtAssignments(const QString& name, const Keys& keys, const ModuleSettings& taken);
    void LookAtFrequency(const QString& key, const QString& content, double used);
    void LookAtRest();
    void Tell(CodedText fault);
    void Shorten();

    Keys m_top;                     ///< the section's own
    std::map<int, Keys> m_modules;  ///< by their numbers
    QStringList m_kept;             ///< sections that a server has put aside
    QStringList m_unknown;
    std::vector<CodedText> m_faults;
    bool m_isToBeWrittenOver = false;
};
