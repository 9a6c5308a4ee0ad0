// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/command/watcher.h>

#include <QtCore/QDateTime>

#include <algorithm>

namespace mctree {

namespace {

QString NameOf(const IVtClient& client) {
    const QString address =
        QStringLiteral("%1:%2").arg(client.GetServerAddress()).arg(client.GetServerPort());
    const QString application = client.GetServerApplication();
    return application.isEmpty() ? address : QStringLiteral("%1 at %2").arg(application, address);
}

}  // namespace

Watcher::Watcher(const Context& context, const Mirrors& mirrors)
    : m_context(context),
      m_lines(context.printer, context.arguments.isJson, &QDateTime::currentDateTime),
      m_client(*this) {
    m_settle.setSingleShot(true);
    QObject::connect(&m_settle, &QTimer::timeout, &m_settle, [this] { SettleStates(); });
    for (const auto& mirror : mirrors) {
        const Mirror* const watched = mirror.get();
        const auto print = [this, watched](EEvent event, const values::TreeItem& item) {
            Print(event, item, *watched);
        };
        m_watched.push_back({watched, std::make_unique<SubtreeWatch>(print, [this] { m_settle.start(0); })});
        m_watched.back().subtree->Watch(*watched->GetItem());
    }
    m_client.Begin(&m_context.session.Client());
    m_lines.PrintConnected(NameOf(m_context.session.Client()));
}

void Watcher::Update(Observable*, TChangeCode) {
    FollowConnection();
    FollowTics();
}

void Watcher::Print(EEvent event, const values::TreeItem& item, const Mirror& mirror) {
    if (m_isDone) return;
    m_lines.PrintEvent(event, item, mirror.RemotePathOf(item));
    ++m_printed;
    CheckDone();
}

void Watcher::FollowConnection() {
    const IVtClient& client = m_context.session.Client();
    if (m_isDone || client.IsConnected() == m_isConnected) return;
    m_isConnected = client.IsConnected();
    if (m_isConnected)
        m_lines.PrintConnected(NameOf(client));
    else
        m_lines.PrintDisconnected(client.GetLastError());
    CheckDone();
}

void Watcher::FollowTics() {
    for (const Watched& watched : m_watched) {
        values::TreeItem* const item = watched.mirror->GetItem();
        // The whole subtree had gone, so the line tells of the whole subtree.
        if (item != nullptr && watched.subtree->IsEmpty()) watched.subtree->WatchAdded(*item);
    }
}

void Watcher::SettleStates() {
    for (const Watched& watched : m_watched)
        watched.subtree->SettleStates(watched.mirror->IsEstablished());
}

void Watcher::CheckDone() {
    const int count = m_context.arguments.count;
    m_isDone = !m_context.printer.IsOpen() || (count > 0 && m_printed >= count);
    if (m_isDone) m_context.session.Wake();
}

}  // namespace mctree
