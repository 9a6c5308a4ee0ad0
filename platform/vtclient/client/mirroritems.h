// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/treeitem.h>
#include <platform/vtclient/client/mirrorrecords.h>
#include <platform/vtclient/wire/treechange.h>

#include <QtCore/QString>

#include <deque>
#include <memory>

namespace vt {

/// The items that a mirror makes and destroys because the server does. What is new stays aside until the
/// whole of it is here and is attached then; what is destroyed is not taken for a deletion by the
/// application.
class MirrorItems {
  public:
    MirrorItems(QString localPath, MirrorRecords& records);
    MirrorItems(const MirrorItems&) = delete;
    MirrorItems& operator=(const MirrorItems&) = delete;

    /// A new item with its record, below \a parent (null: the root); null, with \a error, if it cannot be
    /// there.
    MirrorRecord* Make(const TreeChange& change, MirrorRecord* parent, QString* error);
    /// Attaches all that is aside. Observers are told.
    bool AttachAll(QString* error);
    /// Whether \a record's item is aside, or being attached.
    bool IsNew(const MirrorRecord& record) const { return record.series == m_series; }
    bool IsAttaching(const values::TreeItem* item) const { return item == m_attaching; }

    /// Destroys \a item, aside or in the tree, and so what is below it and all their records. Observers are
    /// told.
    void Destroy(values::TreeItem* item);
    /// Destroys all that is aside: nobody has seen it, and nobody has deleted it.
    void DestroyNew();
    /// Destroys what is aside to be attached below \a parent, which ends.
    void DestroyNewBelow(const MirrorRecord& parent);
    bool IsDestroying() const { return m_isDestroying; }

  private:
    /// Something aside, and where it will go; no parent: the root.
    struct Aside {
        std::unique_ptr<values::TreeItem> item;
        MirrorRecord* parent;
    };

    bool Attach(Aside aside, QString* error);
    bool AttachBelow(MirrorRecord& parent, std::unique_ptr<values::TreeItem>& item, QString* error);

    QString m_localPath;
    MirrorRecords& m_records;
    std::deque<Aside> m_aside;
    quint32 m_series = 1;
    const values::TreeItem* m_attaching = nullptr;
    bool m_isDestroying = false;
};

}  // namespace vt
