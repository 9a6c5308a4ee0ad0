// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/client/editqueue.h>
#include <platform/vtclient/client/mirroritems.h>
#include <platform/vtclient/client/mirrorrecords.h>
#include <platform/vtclient/wire/treechange.h>

#include <QtCore/QStringList>

namespace vt {

class SnapshotMerge;

/// Applies what the server tells of items that come and go. Where a local item of the same name and type is
/// there already, it stays and becomes the server's; else the server wins.
class ItemChanges {
  public:
    ItemChanges(const TreeMirror& mirror, MirrorRecords& records, MirrorItems& items, EditQueue& edits,
                const SnapshotMerge& merge);
    ItemChanges(const ItemChanges&) = delete;
    ItemChanges& operator=(const ItemChanges&) = delete;

    /// The server's paths at and below which may be written.
    void SetWritable(const QStringList& prefixes);
    /// Each is false, with \a error, if no server could have sent the change.
    bool ApplyAdded(const TreeChange& change, QString* error);
    bool ApplyRemoved(quint32 id, QString* error);

  private:
    bool ApplyRoot(const TreeChange& change, QString* error);
    bool Place(const TreeChange& change, MirrorRecord* parent, values::TreeItem* existing, QString* error);
    bool Replace(const TreeChange& change, MirrorRecord* parent, values::TreeItem* existing, QString* error);
    bool Make(const TreeChange& change, MirrorRecord* parent, QString* error);
    void Bind(MirrorRecord& record, MirrorRecord* parent, const TreeChange& change);
    bool IsWritable(const MirrorRecord& record) const;

    const TreeMirror& m_mirror;
    MirrorRecords& m_records;
    MirrorItems& m_items;
    EditQueue& m_edits;
    const SnapshotMerge& m_merge;
    bool m_isAllWritable = false;
    QStringList m_writable;  ///< the prefixes below the remote path
};

}  // namespace vt
