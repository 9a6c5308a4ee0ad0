// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mctree/mirror/session.h>
#include <apps/mctree/text/outcome.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <chrono>
#include <memory>
#include <vector>

namespace values {
class TreeItem;
}

namespace mctree {

/// A subtree of the server, mirrored in the process's tree.
class Mirror {
  public:
    /// Asks for the subtree at \a remotePath (normalised), and shows it at a place of its own, one for each
    /// \a number. The session outlives this object.
    Mirror(Session& session, const QString& remotePath, int number);
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
    /// Where the server has \a item, which lies in this mirror.
    QString RemotePathOf(const values::TreeItem& item) const;

  private:
    Session& m_session;
    QString m_remotePath;
    QString m_localPath;
    IVtTic* m_tic;  ///< owned by the client; null if it did not take the paths
};

using Mirrors = std::vector<std::unique_ptr<Mirror>>;

/// Mirrors all \a paths and waits, at most \a timeout in all, for the connection and for every mirror to
/// be here. Says which is not.
Outcome Establish(Session& session, const QStringList& paths, std::chrono::milliseconds timeout,
                  Mirrors* mirrors);

}  // namespace mctree
