// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/mirror/mirror.h>

#include <apps/common/safetext.h>
#include <platform/values/tree.h>

#include <algorithm>

namespace mctree {

namespace {

/// Below a node of its own, so that any two mirrors lie apart, and named as the server names it, since names
/// tell units.
QString LocalPath(const QString& remotePath, int number) {
    const QString name = remotePath.section(QLatin1Char('/'), -1);
    return QStringLiteral("/Remote%1/").arg(number) + (name.isEmpty() ? QStringLiteral("Root") : name);
}

}  // namespace

Mirror::Mirror(Session& session, const QString& remotePath, int number)
    : m_session(session),
      m_remotePath(remotePath),
      m_localPath(LocalPath(remotePath, number)),
      m_tic(session.Client().AddTic(m_localPath + QLatin1Char(',') + m_remotePath, "")) {
    if (m_tic != nullptr) session.Follow(*m_tic);
}

Mirror::~Mirror() {
    if (m_tic != nullptr) m_session.Client().RemoveTic(m_tic);
}

bool Mirror::IsRefused(QString* reason) const {
    if (m_tic == nullptr) {
        *reason = QStringLiteral("not a path that can be asked for");
        return true;
    }
    return m_session.IsRefused(GetItem(), m_remotePath, reason);
}

values::TreeItem* Mirror::GetItem() const {
    return values::Tree::Instance()->FindItem(m_localPath);
}

QString Mirror::RemotePathOf(const values::TreeItem& item) const {
    const QString below = item.GetPathName().mid(m_localPath.size());
    return m_remotePath == QLatin1String("/") && !below.isEmpty() ? below : m_remotePath + below;
}

namespace {

Outcome NotHere(const Mirror& mirror) {
    QString reason;
    const QString& path = mirror.GetRemotePath();
    if (mirror.IsRefused(&reason)) return Outcome::RefusedAt(path, reason);
    if (!mirror.IsAbsent())
        return {EExitCode::NoConnection,
                QStringLiteral("%1 did not come in time").arg(safetext::Escaped(path))};
    return {EExitCode::Refused, QStringLiteral("not found: ") + safetext::Escaped(path)};
}

bool IsSettled(const std::unique_ptr<Mirror>& mirror) {
    QString reason;
    return mirror->IsEstablished() || mirror->IsAbsent() || mirror->IsRefused(&reason);
}

}  // namespace

Outcome Establish(Session& session, const QStringList& paths, std::chrono::milliseconds timeout,
                  Mirrors* mirrors) {
    for (const QString& path : paths)
        mirrors->push_back(std::make_unique<Mirror>(session, path, static_cast<int>(mirrors->size())));
    const auto areSettled = [mirrors] { return std::all_of(mirrors->begin(), mirrors->end(), IsSettled); };
    const auto isOver = [&] { return areSettled() || !session.Client().IsConnected(); };

    const QDeadlineTimer deadline(timeout);
    while (true) {
        if (Outcome outcome = session.Connect(deadline); !outcome.IsDone()) return outcome;
        const Session::EWait wait = session.WaitUntil(isOver, deadline);
        if (wait == Session::EWait::Interrupted) return Session::Interrupted(EExitCode::Refused);
        // The connection was lost before everything was here: the client connects again by itself.
        if (wait == Session::EWait::TimedOut || areSettled()) break;
    }
    const auto missing = std::find_if(mirrors->begin(), mirrors->end(),
                                      [](const auto& mirror) { return !mirror->IsEstablished(); });
    return missing == mirrors->end() ? Outcome() : NotHere(**missing);
}

}  // namespace mctree
