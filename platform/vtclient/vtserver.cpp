// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/vtserver.h>

#include <platform/app/applicationend.h>
#include <platform/vtclient/channel/endedobjects.h>
#include <platform/vtclient/channel/framedsocket.h>
#include <platform/vtclient/channel/qteventloop.h>
#include <platform/vtclient/channel/socketcalls.h>
#include <platform/vtclient/channel/socketlistener.h>
#include <platform/vtclient/server/serverhub.h>

#include <optional>

/// What goes with one Listen(), at the latest when no call of it is under way.
struct VtServer::Works {
    Works(IVtAccess& access, const vt::ServerHub::Settings& settings) : hub(access, loop, settings) {}
    bool IsIdle() const { return hub.IsIdle(); }

    vt::QtEventLoop loop;
    vt::ServerHub hub;
};

class VtServer::Private {
  public:
    explicit Private(IVtAccess& serverAccess) : access(serverAccess) {}

    IVtAccess& access;
    IVtHistory* history = nullptr;
    vt::IRoads* roads = nullptr;
    std::unique_ptr<Works> works;
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

void VtServer::SetHistory(IVtHistory* history) {
    m_d->history = history;
}

void VtServer::SetRoads(vt::IRoads* roads) {
    m_d->roads = roads;
    if (m_d->works) m_d->works->hub.SetRoads(roads);
}

VtRoadFigures VtServer::GetRoadFigures() const {
    return m_d->works ? m_d->works->hub.Subtrees().RoadFigures() : VtRoadFigures();
}

void VtServer::ChangeRoadKeys() {
    if (m_d->works) m_d->works->hub.ChangeRoadKeys();
}

bool VtServer::Listen(const VtServerOptions& options, QString* error) {
    Close(QStringLiteral("the server listens elsewhere"));
    auto listener = std::make_unique<vt::SocketListener>();
    if (!listener->Listen(options, m_d->access.NeedsCredentials(), error)) return false;
    vt::ServerHub::Settings settings;
    settings.application = options.application;
    settings.pingInterval = options.pingInterval;
    settings.deadAfter = options.deadAfter;
    settings.maxSessions = options.maxSessions;
    settings.memoryBytes = options.memoryBytes;
    settings.maxPending = vt::MaxPending();
    settings.history = m_d->history;
    settings.roads = m_d->roads;
    m_d->works = std::make_unique<Works>(m_d->access, settings);
    m_d->listener = std::move(listener);
    m_d->listener->SetHandler(
        [this](std::unique_ptr<vt::IChannel> channel) { m_d->works->hub.AddChannel(std::move(channel)); });
    m_d->applicationEnd.emplace([this] { End(); });
    return true;
}

void VtServer::Serve(std::unique_ptr<vt::IChannel> channel) {
    if (m_d->works) m_d->works->hub.AddChannel(std::move(channel));
}

void VtServer::Close(const QString& reason) {
    m_d->applicationEnd.reset();
    m_d->listener.reset();
    std::unique_ptr<Works> works = std::move(m_d->works);
    if (!works) return;
    works->hub.Shutdown(reason);
    vt::EndedObjects::Instance().Take(std::move(works));  // a call of the server itself may have led here
}

bool VtServer::ReadCertificates(QString* error) {
    return m_d->listener == nullptr || m_d->listener->ReadCertificates(error);
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
    return m_d->works ? m_d->works->hub.GetPeers() : std::vector<VtPeer>();
}

void VtServer::EndSession(int session, const QString& reason) {
    if (m_d->works) m_d->works->hub.EndSession(session, reason);
}
