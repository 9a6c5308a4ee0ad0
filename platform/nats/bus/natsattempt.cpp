// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/bus/natsattempt.h>

#include <platform/nats/bus/cnatsoptions.h>
#include <platform/nats/bus/natsthreads.h>

#include <QtCore/QMetaObject>
#include <QtCore/QObject>

#include <utility>

namespace nats {

NatsAttempt::NatsAttempt(const NatsOptions& options, std::shared_ptr<NatsNotices> notices, QObject* receiver,
                         Handler onDone)
    : m_options(options), m_notices(std::move(notices)), m_onDone(std::move(onDone)), m_receiver(receiver) {}

std::shared_ptr<NatsAttempt> NatsAttempt::Start(const NatsOptions& options,
                                                std::shared_ptr<NatsNotices> notices, QObject* receiver,
                                                Handler onDone) {
    auto attempt = std::make_shared<NatsAttempt>(options, std::move(notices), receiver, std::move(onDone));
    NatsThreads::Instance().Run([attempt] { attempt->Run(); });
    return attempt;
}

void NatsAttempt::Abandon() {
    const std::lock_guard lock(m_mutex);
    m_receiver = nullptr;
}

bool NatsAttempt::IsAbandoned() {
    const std::lock_guard lock(m_mutex);
    return m_receiver == nullptr;
}

void NatsAttempt::Run() {
    auto outcome = std::make_shared<Outcome>();
    for (const HostPort& server : m_options.servers) {
        if (IsAbandoned()) return;
        TryServer(server, *outcome);
        if (outcome->connection != nullptr) break;
    }
    nats_ReleaseThreadMemory();
    const std::lock_guard lock(m_mutex);
    if (m_receiver == nullptr) return;
    auto self = shared_from_this();
    // Whom it would tell may be gone by then, or have another attempt under way; what came of this one then
    // goes with the call.
    QMetaObject::invokeMethod(
        m_receiver,
        [self, outcome] {
            if (!self->IsAbandoned()) self->m_onDone(*outcome);
        },
        Qt::QueuedConnection);
}

void NatsAttempt::TryServer(const HostPort& server, Outcome& outcome) {
    CnatsPointer<natsOptions> options = MakeCnatsOptions(m_options, server, &outcome.problem);
    if (options == nullptr) return;
    auto socket = std::make_shared<NatsSocket>();
    socket->Attach(options.get());
    void* const heard = m_notices->Hear(options.get());
    natsConnection* made = nullptr;
    const natsStatus status = natsConnection_Connect(&made, options.get());
    if (status != NATS_OK) {
        NatsNotices::Forget(heard);
        outcome.problem = QStringLiteral("NATS at %1: %2").arg(server.ToText(), CnatsText(status));
        return;
    }
    outcome = {socket, CnatsPointer<natsConnection>(made), server, QString()};
}

}  // namespace nats
