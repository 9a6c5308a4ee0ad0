// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/client/treemirror.h>

#include <platform/values/tree.h>
#include <platform/vtclient/client/changeerror.h>
#include <platform/vtclient/client/contentchanges.h>
#include <platform/vtclient/client/editqueue.h>
#include <platform/vtclient/client/itemchanges.h>
#include <platform/vtclient/client/localitems.h>
#include <platform/vtclient/client/mirroritems.h>
#include <platform/vtclient/client/mirrorrecords.h>
#include <platform/vtclient/client/snapshotmerge.h>

#include <utility>

namespace vt {

TreeMirror::IHost::~IHost() = default;

struct TreeMirror::Parts {
    Parts(TreeMirror& mirror, IHost& host)
        : records(mirror, mirror.RemotePath()),
          items(mirror.LocalPath(), records),
          edits(mirror, records, items, host),
          locals(records, items, edits),
          merge(records, items, locals),
          itemChanges(mirror, records, items, edits, merge),
          contentChanges(records, items) {}

    MirrorRecords records;
    MirrorItems items;
    EditQueue edits;
    LocalItems locals;
    SnapshotMerge merge;
    ItemChanges itemChanges;
    ContentChanges contentChanges;
};

TreeMirror::TreeMirror(QString localPath, QString remotePath, IHost& host)
    : m_localPath(std::move(localPath)),
      m_remotePath(std::move(remotePath)),
      m_host(host),
      m_parts(std::make_unique<Parts>(*this, host)) {}

TreeMirror::~TreeMirror() {
    Release(nullptr);
}

values::TreeItem* TreeMirror::Root() const {
    const MirrorRecord* const root = m_parts->records.Root();
    return root != nullptr ? root->item : nullptr;
}

// What the server tells ------------------------------------------------------------------------------------

void TreeMirror::Start(const QStringList& writable, int session) {
    if (IsReleased()) return;
    m_state = EState::Receiving;
    m_parts->items.DestroyNew();
    m_parts->merge.Begin(values::Tree::Instance()->FindItem(m_localPath));
    m_parts->itemChanges.SetWritable(writable);
    m_parts->contentChanges.SetSession(session);
}

bool TreeMirror::Apply(const TreeChange& change, QString* error) {
    if (IsReleased()) return true;
    if (change.change == EChange::Added) return m_parts->itemChanges.ApplyAdded(change, error);
    const MirrorRecords::Numbered* const found = m_parts->records.Find(change.id);
    if (found == nullptr) return FailChange(error, QStringLiteral("an unknown id %1").arg(change.id));
    if (change.change == EChange::Removed) return m_parts->itemChanges.ApplyRemoved(change.id, error);
    if (found->record == nullptr) return true;  // deleted here
    return m_parts->contentChanges.Apply(*found->record, change, error);
}

bool TreeMirror::EndPart(bool hasMore, QString* error) {
    return hasMore || !IsEstablished() || m_parts->items.AttachAll(error);
}

bool TreeMirror::Finish(QString* error) {
    if (IsReleased()) return true;
    if (m_parts->records.Root() == nullptr)
        return FailChange(error, QStringLiteral("a snapshot without its root"));
    if (!m_parts->items.AttachAll(error)) return false;
    m_parts->merge.Finish();
    if (IsReleased() || m_parts->records.Root() == nullptr) return true;
    m_state = EState::Established;
    if (!m_parts->edits.IsEmpty()) m_host.OnEdits(*this);
    return true;
}

// What is edited here --------------------------------------------------------------------------------------

void TreeMirror::SendEdits() {
    m_parts->edits.Send();
}

void TreeMirror::OnAnswer(const AnswerMessage& answer) {
    m_parts->edits.OnAnswer(answer);
}

bool TreeMirror::HasUnanswered() const {
    return !m_parts->edits.IsAnswered();
}

bool TreeMirror::HasEdits() const {
    return !m_parts->edits.IsEmpty();
}

void TreeMirror::OnUpdate(MirrorRecord& record, TChangeCode code) {
    if (record.IsNode()) {
        if (code == changecode::GoingAway)
            OnGone(record);
        else if (code == changecode::ChildrenAdded && !m_parts->items.IsNew(record) &&
                 !m_parts->merge.IsReceiving())
            m_parts->locals.OfferChildren(record);
        return;
    }
    const bool isListContent = code == changecode::ItemsChanged && record.kind == EItemKind::List;
    if (code == changecode::ContentChanged || isListContent)
        m_parts->edits.OnEdited(record);
    else if (code == changecode::StateChanged && record.item->GetState() == values::GoingAway)
        OnGone(record);
}

void TreeMirror::OnGone(MirrorRecord& record) {
    const bool isRoot = &record == m_parts->records.Root();
    Forget(record);
    if (!isRoot || m_parts->items.IsDestroying()) return;
    if (IsEstablished()) m_state = EState::Receiving;
    m_host.OnRootDeleted(*this);
}

// The end --------------------------------------------------------------------------------------------------

void TreeMirror::Lose() {
    if (IsReleased()) return m_parts->edits.Clear();
    if (!IsConnected()) return;
    m_state = EState::Lost;
    m_parts->items.DestroyNew();
    m_parts->records.ForEach(
        [](const MirrorRecord& record) { return record.IsAtServer() && !record.IsNode(); },
        [](MirrorRecord& record) { record.Value().SetState(values::Stale, &record); });
    m_parts->edits.Lose();
}

void TreeMirror::Vanish() {
    if (!IsReleased()) m_state = EState::Lost;
    m_parts->items.DestroyNew();
    values::TreeItem* const root = Root();
    if (root != nullptr && root != values::Tree::Instance()->GetRoot())
        m_parts->items.Destroy(root);
    else  // the root of the tree stays
        m_parts->records.ForEach(
            [this](const MirrorRecord& record) {
                return record.IsAtServer() && record.parent != nullptr &&
                       record.parent == m_parts->records.Root();
            },
            [this](MirrorRecord& record) { m_parts->items.Destroy(record.item); });
    m_parts->edits.Clear();
}

// Nodes first: who hears that a value is stale may add items to them, which are nobody's by then.
void TreeMirror::Release(const values::TreeItem* item) {
    const auto isBelow = [item](const values::TreeItem* below) {
        while (below != nullptr && below != item)
            below = below->GetParent();
        return below == item;
    };
    const bool isAll = item == nullptr || item == Root();
    if (isAll) {
        m_state = EState::Released;
        m_parts->items.DestroyNew();
    }
    for (const bool areNodes : {true, false}) {
        m_parts->records.ForEach(
            [&](const MirrorRecord& record) {
                return record.IsNode() == areNodes && (isAll || isBelow(record.item));
            },
            [this](MirrorRecord& record) {
                const bool isShown = record.IsAtServer() && !record.IsNode();
                values::TreeItem* const released = record.item;
                Forget(record);
                if (isShown) static_cast<values::ValueBase*>(released)->SetState(values::Stale);
            });
    }
}

void TreeMirror::Forget(MirrorRecord& record) {
    record.item->GetObservable()->DeleteObserver(&record);
    if (record.IsNode()) m_parts->items.DestroyNewBelow(record);
    m_parts->edits.Forget(record);
    m_parts->records.Forget(record, m_parts->items.IsDestroying());
}

}  // namespace vt
