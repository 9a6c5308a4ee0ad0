// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mctree/mirror/session.h>
#include <apps/mctree/text/outcome.h>

#include <QtCore/QDeadlineTimer>
#include <QtCore/QString>

#include <memory>
#include <vector>

namespace values {
class TreeItem;
}

namespace mctree {

/// What an item of the server is wanted for: to look at it, or to use it, as an MpxORV whose client one is.
enum class EPurpose { Look, Use };

/// A subtree of the server, mirrored in the process's tree.
class Mirror {
  public:
    /// Asks for the subtree at \a remotePath (normalised), and shows it at a place of its own, which goes
    /// with this object. The session outlives it.
    Mirror(Session& session, const QString& remotePath, EPurpose purpose);
    ~Mirror();
    Mirror(const Mirror&) = delete;
    Mirror& operator=(const Mirror&) = delete;

    bool IsEstablished() const { return m_tic != nullptr && m_tic->IsEstablished(); }
    /// Whether the server has said that it has nothing there.
    bool IsAbsent() const { return m_tic != nullptr && m_tic->IsAbsent(); }
    /// Whether the server does not let us have it, or refused an edit of its topmost item; and why.
    bool IsRefused(QString* reason) const;

    const QString& GetRemotePath() const { return m_remotePath; }
    /// The topmost item; null while there is none.
    values::TreeItem* GetItem() const;
    /// What the server has at \a remotePath, which lies in this mirror; null if nothing.
    values::TreeItem* ItemAt(const QString& remotePath) const;
    /// Where the server has \a item, which lies in this mirror.
    QString RemotePathOf(const values::TreeItem& item) const;

  private:
    Session& m_session;
    QString m_remotePath;
    QString m_localRoot;
    QString m_localPath;
    IVtTic* m_tic;  ///< owned by the client; null if it did not take the paths
};

using Mirrors = std::vector<std::unique_ptr<Mirror>>;

/// Waits for the connection and until the server has said of every mirror whether it is there.
/// \return why that did not come about.
Outcome Settle(Session& session, const Mirrors& mirrors, QDeadlineTimer deadline);

/// Why \a mirror is not established.
Outcome NotHere(const Mirror& mirror);

}  // namespace mctree
