// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/client/editqueue.h>

#include <platform/app/trace.h>
#include <platform/values/refusals.h>
#include <platform/values/valueselection.h>
#include <platform/vtclient/wire/itemkinds.h>

#include <algorithm>
#include <utility>

namespace vt {

namespace {

/// What a write of \a value asks for: of a selection the key of its current item.
Content ContentToWrite(const MirrorRecord& record) {
    if (record.kind != EItemKind::Selection) return Operations(record.kind)->content(record.Value());
    const auto& selection = static_cast<const values::ValueSelection&>(record.Value());
    if (selection.GetCurrentIndex() == values::ValueSelection::NoIndex) return {};
    return qint64{selection.GetCurrentKey()};
}

/// What the server holds after \a written was done: of a selection where the item with that key is by now.
Content ContentWritten(const MirrorRecord& record, const Content& written) {
    const qint64* const key = std::get_if<qint64>(&written);
    if (record.kind != EItemKind::Selection || key == nullptr) return written;
    const auto& selection = static_cast<const values::ValueSelection&>(record.Value());
    for (int i = 0; i < selection.Count(); ++i)
        if (selection.GetItemAt(i)->GetKey() == *key) return qint64{i};
    return {};
}

/// Whether \a record waits for the answer about \a created, and not for another creation in between.
bool IsWaitingFor(const MirrorRecord& record, const MirrorRecord& created) {
    const MirrorRecord* above = record.parent;
    while (above != nullptr && above != &created && !above->IsUnderWay())
        above = above->parent;
    return above == &created;
}

}  // namespace

EditQueue::EditQueue(TreeMirror& mirror, MirrorRecords& records, MirrorItems& items, TreeMirror::IHost& host)
    : m_mirror(mirror), m_records(records), m_items(items), m_host(host) {}

// What waits -----------------------------------------------------------------------------------------------

void EditQueue::OnEdited(MirrorRecord& record) {
    if (record.state == ERecord::Offered || record.state == ERecord::Refused) {
        record.isEdited = record.isEdited || (m_mirror.IsConnected() && !record.IsQueued());
        return;
    }
    if (!m_mirror.IsConnected())
        return TakeBack(record, QStringLiteral("there is no connection to the server"));
    // The snapshot has not come to it: what it brings would replace what is shown, and not what is queued.
    if (!m_records.IsCurrent(record))
        return TakeBack(record, QStringLiteral("the server's content has not arrived yet"));
    if (record.isOccurring)
        Push({&record, true, ContentToWrite(record)});
    else
        Queue(record);
}

void EditQueue::Queue(MirrorRecord& record) {
    if (!m_mirror.IsConnected()) return;  // what is made meanwhile is offered after the next snapshot
    if (record.HasRequests()) record.isEdited = true;
    if (!record.IsUnderWay()) Push({&record, false, Content()});
}

void EditQueue::Push(Edit edit) {
    const bool wasIdle = m_edits.empty();
    if (wasIdle) m_firstEdit = 1;
    edit.earlier = edit.record->lastQueued;
    edit.record->lastQueued = m_firstEdit + static_cast<quint32>(m_edits.size());
    m_edits.push_back(std::move(edit));
    if (wasIdle && m_mirror.IsEstablished()) m_host.OnEdits(m_mirror);
}

EditQueue::Edit EditQueue::PopEdit() {
    Edit edit = std::move(m_edits.front());
    m_edits.pop_front();
    const quint32 number = m_firstEdit++;
    if (edit.record != nullptr && edit.record->lastQueued == number) edit.record->lastQueued = 0;
    return edit;
}

void EditQueue::AddRequest(Request request) {
    request.earlier = std::exchange(request.record->lastRequest, request.number);
    m_requests.push_back(std::move(request));
}

// Answers come in the order of the requests, but for a peculiar server.
std::deque<EditQueue::Request>::iterator EditQueue::FindRequest(quint32 number) {
    if (!m_requests.empty() && m_requests.front().number == number) return m_requests.begin();
    const auto isBefore = [](const Request& request, quint32 other) { return request.number < other; };
    return std::lower_bound(m_requests.begin(), m_requests.end(), number, isBefore);
}

quint32 EditQueue::LastUnanswered(quint32 number) {
    while (number != 0) {
        const auto request = FindRequest(number);
        if (request == m_requests.end() || request->number != number)
            return 0;  // was the first, and answered
        if (!request->isAnswered) break;
        number = request->earlier;
    }
    return number;
}

EditQueue::Request EditQueue::TakeRequest(std::deque<Request>::iterator request) {
    Request taken = std::move(*request);
    request->isAnswered = true;
    while (!m_requests.empty() && m_requests.front().isAnswered)
        m_requests.pop_front();
    if (taken.record != nullptr && taken.record->lastRequest == taken.number)
        taken.record->lastRequest = LastUnanswered(taken.earlier);
    return taken;
}

// Sending --------------------------------------------------------------------------------------------------

void EditQueue::Send() {
    while (m_mirror.IsEstablished() && !m_edits.empty()) {
        const Edit edit = PopEdit();
        if (edit.record == nullptr) continue;
        if (edit.record->IsAtServer() && !edit.record->IsNode())
            SendWrite(edit);
        else
            SendCreation(*edit.record);
    }
}

void EditQueue::SendWrite(const Edit& edit) {
    MirrorRecord& record = *edit.record;
    if (!edit.isOccurrence && Operations(record.kind)->content(record.Value()) == record.server) return;
    WriteMessage write;
    write.id = record.id;
    write.content = edit.isOccurrence ? edit.content : ContentToWrite(record);
    record.isEdited = false;
    const quint32 request = m_host.SendWrite(m_mirror, &write);
    if (request == 0) return TakeBack(record, QStringLiteral("the content is too large to be sent"));
    AddRequest({request, &record, false, std::move(write.content)});
}

// Of a node that the server has, too: it hears again who wants it.
void EditQueue::SendCreation(MirrorRecord& record) {
    const bool isBelowRefused = record.parent != nullptr && record.parent->state == ERecord::Refused;
    if (record.state == ERecord::Offered && isBelowRefused) m_records.Refuse(record);
    if (record.state == ERecord::Refused) return DestroyAwaited(record);
    if (record.HasRequests()) return;
    CreateMessage create;
    create.path = m_records.PathOf(record);
    create.item.kind = record.kind;
    record.isEdited = false;
    const quint32 request = m_host.SendCreation(m_mirror, &create, *record.item);
    if (request == 0) return RefuseCreation(record, QStringLiteral("it is too large to be sent"));
    AddRequest({request, &record, true, Content()});
}

// Answers --------------------------------------------------------------------------------------------------

void EditQueue::OnAnswer(const AnswerMessage& answer) {
    const auto found = FindRequest(answer.req);
    if (found == m_requests.end() || found->number != answer.req || found->isAnswered) return;
    const Request request = TakeRequest(found);
    if (request.record == nullptr) return;
    if (request.isCreation)
        OnCreationAnswer(*request.record, answer);
    else
        OnWriteAnswer(*request.record, request, answer);
}

void EditQueue::OnWriteAnswer(MirrorRecord& record, const Request& request, const AnswerMessage& answer) {
    const bool isRefused = answer.result == EResult::Denied || answer.result == EResult::Gone;
    // Of occurrences the server's echo says how they stand, and others may have come since.
    if (record.isOccurring && !isRefused) return;
    const bool isEditedAgain = std::exchange(record.isEdited, false) || record.HasRequests();
    if (answer.result == EResult::Done) record.server = ContentWritten(record, request.content);
    if (answer.result == EResult::Clamped) Operations(record.kind)->take(answer.content, &record.server);
    if (isEditedAgain) {
        if (!record.isOccurring) Queue(record);
        if (isRefused)
            values::Refusals::Instance().Report(record.item, m_records.PathOf(record), answer.reason);
    } else if (isRefused) {
        TakeBack(record, answer.reason);
    } else {
        record.ShowServerContent();
    }
}

void EditQueue::OnCreationAnswer(MirrorRecord& record, const AnswerMessage& answer) {
    if (!record.IsAtServer()) {
        if (answer.result != EResult::Done) return RefuseCreation(record, answer.reason);
        return m_items.Destroy(record.item);  // it was there, and has gone again
    }
    // It has come meanwhile, and what was said of its content waited for this answer.
    if (record.IsNode()) return DestroyAwaited(record);
    if (record.HasRequests()) return;
    if (std::exchange(record.isEdited, false))
        Queue(record);
    else if (!record.IsQueued())
        record.ShowServerContent();
}

void EditQueue::RefuseCreation(MirrorRecord& record, const QString& reason) {
    if (record.state == ERecord::Offered) m_records.Refuse(record);
    MCS_TRACE(QStringLiteral("'%1' is not created at the server and stays local: %2")
                  .arg(m_records.PathOf(record), reason));
    DestroyAwaited(record);
}

// Shows the server's content, and says why.
void EditQueue::TakeBack(MirrorRecord& record, const QString& reason) {
    const ObservableGuard guard(record.Value());
    values::TreeItem* const item = record.item;
    const QString path = m_records.PathOf(record);
    record.ShowServerContent();
    values::Refusals::Instance().Report(guard.IsAlive() ? item : nullptr, path, reason);
}

// The server has told of all that came with what was created: what was waited for will not come.
void EditQueue::DestroyAwaited(const MirrorRecord& created) {
    if (!m_records.HasAwaited()) return;
    const RecordGuard guard(created);
    m_records.ForEach(
        [&](const MirrorRecord& record) {
            return record.state == ERecord::Awaited && guard.IsAlive() && IsWaitingFor(record, created);
        },
        [this](MirrorRecord& record) { m_items.Destroy(record.item); });
}

// The end --------------------------------------------------------------------------------------------------

// One after the other, since whoever is told may delete what the others are about.
void EditQueue::Lose() {
    while (!IsAnswered()) {
        MirrorRecord* const record =
            m_requests.empty() ? PopEdit().record : TakeRequest(m_requests.begin()).record;
        if (record == nullptr || record->IsUnderWay() || !record->IsAtServer() || record->IsNode()) continue;
        record->isEdited = false;
        TakeBack(*record, QStringLiteral("the connection was lost before the server answered"));
    }
}

void EditQueue::Clear() {
    while (!m_edits.empty())
        PopEdit();
    while (!m_requests.empty())
        TakeRequest(m_requests.begin());
}

void EditQueue::Forget(const MirrorRecord& record) {
    for (quint32 number = record.lastQueued; number >= m_firstEdit;) {
        Edit& edit = m_edits[number - m_firstEdit];
        edit.record = nullptr;
        number = edit.earlier;
    }
    for (quint32 number = record.lastRequest; number != 0;) {
        const auto request = FindRequest(number);
        if (request == m_requests.end() || request->number != number) break;
        request->record = nullptr;
        number = request->earlier;
    }
}

}  // namespace vt
