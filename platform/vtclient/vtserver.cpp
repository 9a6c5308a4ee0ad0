// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/vtserver.h>

#include <platform/app/applicationend.h>
#include <platform/app/errorhandler.h>
#include <platform/vtclient/framedsocket.h>
#include <platform/vtclient/qteventloop.h>
#include <platform/vtclient/serverhub.h>
#include <platform/vtclient/socketlistener.h>

#include <optional>

class VtServer::Private {
  public:
    explicit Private(IVtAccess& serverAccess) : access(serverAccess) {}

    IVtAccess& access;
    vt::QtEventLoop loop;
    std::unique_ptr<vt::ServerHub> hub;
    std::unique_ptr<vt::SocketListener> listener;
    std::optional<ApplicationEnd> applicationEnd;  ///< while it listens
};

VtServer::VtServer(IVtAccess& access) : m_d(std::make_unique<Private>(access)) {}

VtServer::~VtServer() {
    End();
}

void VtServer::End() {
    Close(QStringLiteral("the server ends"));
}

bool VtServer::Listen(const VtServerOptions& options, QString* error) {
    Close(QStringLiteral("the server listens elsewhere"));
    auto listener = std::make_unique<vt::SocketListener>();
    if (!listener->Listen(options, m_d->access.NeedsCredentials(), error)) return false;
    vt::ServerHub::Settings settings;
    settings.application = options.application;
    settings.pingInterval = options.pingInterval;
    settings.deadAfter = options.deadAfter;
    m_d->hub = std::make_unique<vt::ServerHub>(m_d->access, m_d->loop, settings);
    m_d->listener = std::move(listener);
    m_d->listener->SetHandler(
        [this](std::unique_ptr<vt::IChannel> channel) { m_d->hub->AddChannel(std::move(channel)); });
    m_d->applicationEnd.emplace([this] { End(); });
    return true;
}

void VtServer::Close(const QString& reason) {
    m_d->applicationEnd.reset();
    m_d->listener.reset();
    if (m_d->hub) m_d->hub->EndAll(reason);
    m_d->hub.reset();
}

bool VtServer::IsListening() const {
    return m_d->listener != nullptr;
}

QString VtServer::GetAddress() const {
    return m_d->listener ? m_d->listener->Address() : QString();
}

int VtServer::GetPort() const {
    return m_d->listener ? m_d->listener->Port() : 0;
}

std::vector<VtPeer> VtServer::GetPeers() const {
    return m_d->hub ? m_d->hub->GetPeers() : std::vector<VtPeer>();
}

void VtServer::EndSession(int session, const QString& reason) {
    if (m_d->hub) m_d->hub->EndSession(session, reason);
}
