// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/client/mirroritems.h>
#include <platform/vtclient/client/mirrorrecords.h>
#include <platform/vtclient/wire/treechange.h>

namespace vt {

/// Applies what the server tells of a value that is here: its content, choices, limits, name and flags. What
/// is edited here is newer and stays shown until the server has answered.
class ContentChanges {
  public:
    ContentChanges(MirrorRecords& records, MirrorItems& items) : m_records(records), m_items(items) {}

    /// What the server says that \a session caused is shown here already.
    void SetSession(int session) { m_session = session; }
    /// False, with \a error, if no server could have sent it.
    bool Apply(MirrorRecord& record, const TreeChange& change, QString* error);
    /// Shows delivery and state.
    static void ShowFlags(MirrorRecord& record, unsigned flags);

  private:
    bool ApplyOccurrence(MirrorRecord& record, QString* error);
    static bool ApplyChoices(MirrorRecord& record, const TreeChange& change, QString* error);
    bool ApplyDescription(MirrorRecord& record, const TreeChange& change, QString* error);
    void Rename(MirrorRecord& record, const QString& name);

    MirrorRecords& m_records;
    MirrorItems& m_items;
    int m_session = 0;
};

}  // namespace vt
