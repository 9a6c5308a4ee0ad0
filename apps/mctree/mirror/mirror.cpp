// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/mirror/mirror.h>

#include <apps/common/safetext.h>
#include <platform/values/tree.h>

#include <algorithm>

namespace mctree {

namespace {

/// The last name of the local path is the server's, since names tell units.
QString LocalPath(const QString& localRoot, const QString& remotePath) {
    const QString name = remotePath.section(QLatin1Char('/'), -1);
    return localRoot + QLatin1Char('/') + (name.isEmpty() ? QStringLiteral("Root") : name);
}

const char* OptionsOf(EPurpose purpose) {
    return purpose == EPurpose::Look ? ticoption::Look : "";
}

}  // namespace

Mirror::Mirror(Session& session, const QString& remotePath, EPurpose purpose)
    : m_session(session),
      m_remotePath(remotePath),
      m_localRoot(QStringLiteral("/Remote%1").arg(session.NextMirror())),
      m_localPath(LocalPath(m_localRoot, m_remotePath)),
      m_tic(session.Client().AddTic(m_localPath + QLatin1Char(',') + m_remotePath, OptionsOf(purpose))) {
    if (m_tic != nullptr) session.Follow(*m_tic);
}

Mirror::~Mirror() {
    m_session.Forget(GetItem(), m_remotePath);
    if (m_tic != nullptr) m_session.Client().RemoveTic(m_tic);
    values::Tree* const tree = values::Tree::Instance();
    if (values::TreeItem* const place = tree->FindItem(m_localRoot)) tree->Delete(place);
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

values::TreeItem* Mirror::ItemAt(const QString& remotePath) const {
    const QString below = remotePath.mid(m_remotePath == QLatin1String("/") ? 0 : m_remotePath.size());
    return values::Tree::Instance()->FindItem(remotePath == m_remotePath ? m_localPath : m_localPath + below);
}

QString Mirror::RemotePathOf(const values::TreeItem& item) const {
    const QString below = item.GetPathName().mid(m_localPath.size());
    return m_remotePath == QLatin1String("/") && !below.isEmpty() ? below : m_remotePath + below;
}

Outcome NotHere(const Mirror& mirror) {
    QString reason;
    const QString& path = mirror.GetRemotePath();
    if (mirror.IsRefused(&reason)) return Outcome::RefusedAt(path, reason);
    if (!mirror.IsAbsent())
        return {EExitCode::NoConnection,
                QStringLiteral("%1 did not come in time").arg(safetext::Escaped(path))};
    return {EExitCode::Refused, QStringLiteral("not found: ") + safetext::Escaped(path)};
}

namespace {

bool IsSettled(const std::unique_ptr<Mirror>& mirror) {
    QString reason;
    return mirror->IsEstablished() || mirror->IsAbsent() || mirror->IsRefused(&reason);
}

}  // namespace

Outcome Settle(Session& session, const Mirrors& mirrors, QDeadlineTimer deadline) {
    const auto areSettled = [&mirrors] { return std::all_of(mirrors.begin(), mirrors.end(), IsSettled); };
    const auto isOver = [&] { return areSettled() || !session.Client().IsConnected(); };
    while (true) {
        if (Outcome outcome = session.Connect(deadline); !outcome.IsDone()) return outcome;
        const Session::EWait wait = session.WaitUntil(isOver, deadline);
        if (wait == Session::EWait::Interrupted) return Session::Interrupted(EExitCode::Refused);
        // The connection was lost before everything was here: the client connects again by itself.
        if (wait == Session::EWait::TimedOut || areSettled()) return Outcome();
    }
}

}  // namespace mctree
