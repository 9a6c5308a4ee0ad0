// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/codedtext.h>

#include <devicecontrol/multichannelserver/common/mcspolicyset.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

class ICfg;

/// The static MpxORVs in the configuration: section "StaticMpxORVs", whose key "Names" lists them, separated
/// by commas, each with a section of its own that holds a switch per policy and "Comment". Main thread.
class StaticMpxOrvSettings {
  public:
    struct Entry {
        QString name;
        MCSPolicySet policies;  ///< what the section does not say is as for a dynamic MpxORV by default
        QString comment;
        bool obeysBlanking = true;  ///< whether frequencies that ground transmitters use are kept from it
        QString switchedBy =
            {};  ///< who switched that, and when as IClock::UtcText() has it; as in its status
        QString switchedSince = {};
    };

    static constexpr int MaxEntries = 1000;  ///< as many as the status can count

    StaticMpxOrvSettings() = delete;

    /// The entries in \a cfg, the root of the configuration, in order; what is wrong with others is added to
    /// \a problems, one line each.
    static std::vector<Entry> Read(ICfg& cfg, std::vector<CodedText>* problems);
    /// Writes the entries' sections, and leaves the list of names and other sections alone. Does not commit.
    static void Write(ICfg& cfg, const std::vector<Entry>& entries);
};
