// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/bus/natsnotices.h>

#include <QtCore/QMetaObject>
#include <QtCore/QObject>

#include <utility>

namespace nats {

void NatsNotices::Leave() {
    {
        const std::lock_guard lock(m_mutex);
        m_receiver = nullptr;
        m_notices.clear();
    }
    m_subscription.reset();
}

std::vector<NatsNotices::Notice> NatsNotices::Take() {
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_notices, {});
}

void* NatsNotices::Hear(natsOptions* options) {
    void* const closure = new Holder(shared_from_this());
    natsOptions_SetErrorHandler(options, OnError, closure);
    natsOptions_SetClosedCB(options, OnConnectionClosed, closure);
    return closure;
}

void NatsNotices::Forget(void* closure) {
    delete static_cast<Holder*>(closure);
}

natsStatus NatsNotices::Listen(natsConnection* connection, const QByteArray& inbox) {
    m_inboxSize = inbox.size() + 1;
    auto* const closure = new Holder(shared_from_this());
    natsSubscription* made = nullptr;
    const natsStatus status = natsConnection_Subscribe(&made, connection, inbox + ".>", OnMessage, closure);
    if (status != NATS_OK) {
        Forget(closure);
        return status;
    }
    natsSubscription_SetOnCompleteCB(made, OnComplete, closure);
    m_subscription.reset(made);
    return NATS_OK;
}

void NatsNotices::OnError(natsConnection* connection, natsSubscription* /*subscription*/, natsStatus status,
                          void* closure) {
    Notice notice;
    const char* text = nullptr;
    const bool isText = natsConnection_GetLastError(connection, &text) == status;
    notice.complaint = CnatsText(status, isText ? text : nullptr);
    (*static_cast<Holder*>(closure))->Add(std::move(notice));
}

void NatsNotices::OnMessage(natsConnection* /*connection*/, natsSubscription* /*subscription*/,
                            natsMsg* message, void* closure) {
    const CnatsPointer<natsMsg> owned(message);
    NatsNotices& self = **static_cast<Holder*>(closure);
    Notice notice;
    notice.subject = QByteArray(natsMsg_GetSubject(message)).mid(self.m_inboxSize);
    notice.data = QByteArray(natsMsg_GetData(message), natsMsg_GetDataLength(message));
    notice.isUnheard = natsMsg_IsNoResponders(message);
    const char* status = nullptr;
    if (natsMsgHeader_Get(message, "Status", &status) == NATS_OK) notice.status = status;
    self.Add(std::move(notice));
}

void NatsNotices::Add(Notice notice) {
    const std::lock_guard lock(m_mutex);
    if (m_receiver == nullptr || m_notices.size() >= MaxNotices) return;
    m_notices.push_back(std::move(notice));
    if (m_notices.size() == 1) QMetaObject::invokeMethod(m_receiver, m_onNotices, Qt::QueuedConnection);
}

}  // namespace nats
