// SPDX-License-Identifier: Apache-2.0
// What a mirror does with edits of its items, and with the server's answers to them.
#include <platform/vtclient/client/treemirror.h>

#include <platform/app/errorhandler.h>
#include <platform/values/refusals.h>
#include <platform/values/valueselection.h>
#include <platform/vtclient/client/treemirrordetail.h>
#include <platform/vtclient/wire/itemkinds.h>

#include <utility>

namespace vt {

using treemirrordetail::ValueOf;

namespace {

/// What a write of \a value asks for: of a selection the key of its current item.
Content ContentToWrite(const values::ValueBase& value, EItemKind kind) {
    if (kind != EItemKind::Selection) return Operations(kind)->content(value);
    const auto& selection = static_cast<const values::ValueSelection&>(value);
    if (selection.GetCurrentIndex() == values::ValueSelection::NoIndex) return {};
    return qint64{selection.GetCurrentKey()};
}

/// What \a value holds after \a written was done: of a selection where the item with that key is by now.
Content ContentWritten(const values::ValueBase& value, EItemKind kind, const Content& written) {
    const qint64* const key = std::get_if<qint64>(&written);
    if (kind != EItemKind::Selection || key == nullptr) return written;
    const auto& selection = static_cast<const values::ValueSelection&>(value);
    for (int i = 0; i < selection.Count(); ++i)
        if (selection.GetItemAt(i)->GetKey() == *key) return qint64{i};
    return {};
}

}  // namespace

void TreeMirror::OnUpdate(MirrorRecord& record, TChangeCode code) {
    if (record.kind == EItemKind::Node) {
        if (code == changecode::GoingAway)
            OnGone(record);
        else if (code == changecode::ChildrenAdded && record.series != m_series && !m_isMerging)
            AdoptChildren(record);
        return;
    }
    const bool isListContent = code == changecode::ItemsChanged && record.kind == EItemKind::List;
    if (code == changecode::ContentChanged || isListContent)
        OnContent(record);
    else if (code == changecode::StateChanged && record.item->GetState() == values::GoingAway)
        OnGone(record);
}

void TreeMirror::OnGone(MirrorRecord& record) {
    const bool isRoot = &record == m_root;
    record.item->GetObservable()->DeleteObserver(&record);
    Forget(record);
    if (!isRoot || m_isRemoving) return;
    m_isEstablished = false;
    m_host.OnRootDeleted(*this);
}

void TreeMirror::OnContent(MirrorRecord& record) {
    if (record.isLocal && !record.isAwaited) {
        record.isEdited = record.isEdited || (m_isConnected && !record.isQueued);
        return;
    }
    if (!m_isConnected) return TakeBack(record, QStringLiteral("there is no connection to the server"));
    // The snapshot has not come to it: what it brings would replace what is shown, and not what is queued.
    if (record.generation != m_generation)
        return TakeBack(record, QStringLiteral("the server's content has not arrived yet"));
    Queue(record, record.isOccurring);
}

void TreeMirror::Queue(MirrorRecord& record, bool isOccurrence) {
    if (!m_isConnected) return;  // what is made meanwhile is offered after the next snapshot
    if (!isOccurrence) {
        if (record.requests != 0) record.isEdited = true;
        if (record.requests != 0 || record.isQueued) return;
    }
    const bool wasIdle = m_edits.empty();
    record.isQueued = true;
    m_edits.push_back(
        {&record, isOccurrence, isOccurrence ? ContentToWrite(ValueOf(record), record.kind) : Content()});
    if (wasIdle && m_isEstablished) m_host.OnEdits(*this);
}

void TreeMirror::SendEdits() {
    while (m_isEstablished && !m_edits.empty()) {
        const Edit edit = std::move(m_edits.front());
        m_edits.pop_front();
        if (edit.record == nullptr) continue;
        edit.record->isQueued = false;
        if (edit.record->isLocal || edit.record->kind == EItemKind::Node)
            SendCreation(*edit.record);
        else
            SendEdit(edit);
    }
}

void TreeMirror::SendEdit(const Edit& edit) {
    MirrorRecord& record = *edit.record;
    const Content shown = Operations(record.kind)->content(ValueOf(record));
    if (!edit.isOccurrence && shown == record.server) return;
    WriteMessage write;
    write.id = record.id;
    write.content = edit.isOccurrence ? edit.content : ContentToWrite(ValueOf(record), record.kind);
    record.isEdited = false;
    const quint32 request = m_host.SendWrite(*this, &write);
    if (request == 0) return TakeBack(record, QStringLiteral("the content is too large to be sent"));
    ++record.requests;
    m_requests[request] = {&record, false, std::move(write.content)};
}

void TreeMirror::SendCreation(MirrorRecord& record) {
    record.isRefused = record.isRefused || (record.parent != nullptr && record.parent->isRefused);
    if (record.isRefused) return EndWaiting(record);
    if (record.requests != 0) return;
    Message create = Message::Of(EMessage::Create);
    create.path = RemotePathOf(record);
    create.item.kind = record.kind;
    record.isEdited = false;
    const quint32 request = m_host.SendCreation(*this, &create, *record.item);
    if (request == 0) return RefuseCreation(record, QStringLiteral("it is too large to be sent"));
    ++record.requests;
    m_requests[request] = {&record, true, Content()};
}

void TreeMirror::OnAnswer(const AnswerMessage& answer) {
    const auto found = m_requests.find(answer.req);
    if (found == m_requests.end()) return;
    const Request request = std::move(found->second);
    m_requests.erase(found);
    if (request.record == nullptr) return;  // the item has gone meanwhile
    MirrorRecord& record = *request.record;
    --record.requests;
    if (request.isCreation) return OnCreationAnswer(record, answer);
    const bool isRefused = answer.result == EResult::Denied || answer.result == EResult::Gone;
    // Of occurrences the server's echo says how they stand, and others may have come since.
    if (record.isOccurring && !isRefused) return;
    const bool isEditedAgain = record.isEdited || record.requests != 0;
    record.isEdited = false;
    if (answer.result == EResult::Done)
        record.server = ContentWritten(ValueOf(record), record.kind, request.content);
    if (answer.result == EResult::Clamped) {
        Operations(record.kind)->take(answer.content, &record.server);
    }
    if (isEditedAgain) {
        if (!record.isOccurring) Queue(record, false);
        if (isRefused) values::Refusals::Instance().Report(record.item, RemotePathOf(record), answer.reason);
    } else if (isRefused) {
        TakeBack(record, answer.reason);
    } else {
        Show(record);
    }
}

void TreeMirror::OnCreationAnswer(MirrorRecord& record, const AnswerMessage& answer) {
    if (!record.isLocal) {
        // It has come meanwhile, and what was said of its content waited for this answer.
        if (record.kind == EItemKind::Node) return EndWaiting(record);
        if (record.requests != 0) return;
        if (std::exchange(record.isEdited, false))
            Queue(record, false);
        else if (!record.isQueued)
            Show(record);
        return;
    }
    if (answer.result == EResult::Done) return Destroy(record.item);  // it was there, and has gone again
    RefuseCreation(record, answer.reason);
}

void TreeMirror::RefuseCreation(MirrorRecord& record, const QString& reason) {
    record.isRefused = true;
    if (ErrorHandler::Instance().IsTraced(ErrorHandler::TraceWarnings))
        _Q_Trace(QStringLiteral("'%1' is not created at the server and stays local: %2")
                     .arg(RemotePathOf(record), reason),
                 L"platform/vtclient/client/treemirror", __LINE__);
    EndWaiting(record);
}

// Shows the server's content, and says why.
void TreeMirror::TakeBack(MirrorRecord& record, const QString& reason) {
    const ObservableGuard guard(ValueOf(record));
    values::TreeItem* const item = record.item;
    const QString path = RemotePathOf(record);
    Show(record);
    values::Refusals::Instance().Report(guard.IsAlive() ? item : nullptr, path, reason);
}

}  // namespace vt
