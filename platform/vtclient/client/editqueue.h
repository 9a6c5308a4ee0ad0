// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/client/mirroritems.h>
#include <platform/vtclient/client/mirrorrecords.h>
#include <platform/vtclient/client/treemirror.h>
#include <platform/vtclient/wire/messages.h>

#include <deque>

namespace vt {

/// What was edited or made in this process, on its way to the server: waits here to be sent, waits for the
/// answer, and is shown, taken back or kept as the answer says.
class EditQueue {
  public:
    EditQueue(TreeMirror& mirror, MirrorRecords& records, MirrorItems& items, TreeMirror::IHost& host);
    EditQueue(const EditQueue&) = delete;
    EditQueue& operator=(const EditQueue&) = delete;

    /// Nothing waits to be sent.
    bool IsEmpty() const { return m_edits.empty(); }
    /// Nothing waits to be sent, or for an answer.
    bool IsAnswered() const { return m_edits.empty() && m_requests.empty(); }

    /// The content of \a record was edited.
    void OnEdited(MirrorRecord& record);
    /// \a record is to be sent as it is by then: its content, or its creation.
    void Queue(MirrorRecord& record);
    void Send();
    void OnAnswer(const AnswerMessage& answer);
    /// The connection is gone: what was edited is taken back, what was made is offered after the next
    /// snapshot.
    void Lose();
    /// Nothing waits any more, and nothing is taken back.
    void Clear();
    /// Without \a record, which ends.
    void Forget(const MirrorRecord& record);

  private:
    // A record knows the last of each that is about it, and each knows the one before: whoever forgets a
    // record finds what is about it without a look at what is about others.

    /// Something to be sent. A content only of occurrences.
    struct Edit {
        MirrorRecord* record;  ///< null: the item has gone meanwhile
        bool isOccurrence;
        Content content;
        quint32 earlier = 0;  ///< the one about the same record that was queued before; 0: none was
    };
    struct Request {
        quint32 number;
        MirrorRecord* record;  ///< null: the item has gone meanwhile
        bool isCreation;
        Content content;  ///< of a write, as asked for
        bool isAnswered = false;
        quint32 earlier = 0;
    };

    void Push(Edit edit);
    Edit PopEdit();
    void AddRequest(Request request);
    /// The first one that is not before \a number.
    std::deque<Request>::iterator FindRequest(quint32 number);
    /// \a number, or the last one before it about the same record, that has no answer; 0: none.
    quint32 LastUnanswered(quint32 number);
    Request TakeRequest(std::deque<Request>::iterator request);
    void SendWrite(const Edit& edit);
    void SendCreation(MirrorRecord& record);
    void OnWriteAnswer(MirrorRecord& record, const Request& request, const AnswerMessage& answer);
    void OnCreationAnswer(MirrorRecord& record, const AnswerMessage& answer);
    void RefuseCreation(MirrorRecord& record, const QString& reason);
    void TakeBack(MirrorRecord& record, const QString& reason);
    void DestroyAwaited(const MirrorRecord& created);

    TreeMirror& m_mirror;
    MirrorRecords& m_records;
    MirrorItems& m_items;
    TreeMirror::IHost& m_host;
    std::deque<Edit> m_edits;  ///< numbered from m_firstEdit
    quint32 m_firstEdit = 1;
    std::deque<Request> m_requests;  ///< by number; the first one is not answered
};

}  // namespace vt
