// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/command/watcher.h>

#include <apps/mctree/mirror/walk.h>
#include <platform/vtclient/ivtlosses.h>

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

Watcher::Watcher(const Context& context, const Targets& targets)
    : m_context(context),
      m_targets(targets),
      m_lines(context.printer, context.arguments.isJson, &QDateTime::currentDateTime),
      m_client(*this) {
    m_settle.setSingleShot(true);
    QObject::connect(&m_settle, &QTimer::timeout, &m_settle, [this] { SettleStates(); });
    for (const auto& mirror : targets.GetMirrors()) {
        const Mirror* const watched = mirror.get();
        const auto print = [this, watched](EEvent event, const values::TreeItem& item) {
            Print(event, item, *watched);
        };
        m_watched.push_back({watched, std::make_unique<SubtreeWatch>(print, [this] { m_settle.start(0); })});
        if (watched->IsEstablished()) m_watched.back().subtree->Watch(*watched->GetItem());
    }
    m_client.Begin(&m_context.session.Client());
    m_lines.PrintConnected(NameOf(m_context.session.Client()));
    PrintContents();
    CheckDone();
}

void Watcher::PrintContents() {
    ForEachPresent([this](const values::TreeItem&, const QString& path) { m_lines.MakeRoom(path); });
    ForEachPresent([this](const values::TreeItem& item, const QString& path) {
        m_lines.PrintEvent(EEvent::Present, item, path);
    });
    for (const Watched& watched : m_watched) {
        QString reason;
        const Mirror& mirror = *watched.mirror;
        if (mirror.IsAbsent() && !mirror.IsRefused(&reason)) m_lines.PrintAbsent(mirror.GetRemotePath());
    }
    m_context.printer.Flush();
}

/// Calls \a show(item, path) for each value that is there and asked for.
template <class Function>
void Watcher::ForEachPresent(Function&& show) {
    for (const Watched& watched : m_watched) {
        const Mirror& mirror = *watched.mirror;
        if (!mirror.IsEstablished() || m_context.arguments.isChangesOnly) continue;
        Walk(*mirror.GetItem(), [&](const values::TreeItem& item, int) {
            const QString path = mirror.RemotePathOf(item);
            if (!item.IsNode() && IsAskedFor(EEvent::Present, path, mirror)) show(item, path);
        });
    }
}

void Watcher::Update(Observable*, TChangeCode code) {
    if (code == connectioncode::ChangesLost) return TellLoss();
    FollowConnection();
    FollowTics();
}

// Of a connection that was lost there is a line already.
void Watcher::TellLoss() {
    const auto* const losses = dynamic_cast<const IVtLosses*>(&m_context.session.Client());
    if (m_isDone || losses == nullptr || !losses->GetLastLoss().wasConnected) return;
    const VtLoss& loss = losses->GetLastLoss();
    m_lines.PrintLost(loss.path, loss.from, loss.until);
    CheckDone();
}

void Watcher::Print(EEvent event, const values::TreeItem& item, const Mirror& mirror) {
    const QString path = mirror.RemotePathOf(item);
    if (m_isDone || !IsAskedFor(event, path, mirror)) return;
    m_lines.PrintEvent(event, item, path);
    ++m_printed;
    CheckDone();
}

/// Whether the item at \a path of \a mirror is one to be told of, and no earlier path has it told already.
bool Watcher::IsAskedFor(EEvent event, const QString& path, const Mirror& mirror) const {
    for (const Targets::Operand& operand : m_targets.Operands()) {
        if (operand.mirror != &mirror && !operand.mirror->IsEstablished()) continue;
        const PathPattern& pattern = *operand.pattern;
        // What goes takes all that is below it along, of which nothing more is told.
        const bool isIt = event == EEvent::Removed
                              ? pattern.MayMatchBelow(path) || pattern.MatchesAtOrAbove(path)
                              : pattern.MatchesAtOrAbove(path);
        if (isIt) return operand.mirror == &mirror;
    }
    return false;
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
