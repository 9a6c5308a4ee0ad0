// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/connectionexport.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

/// Who is at the other end of a session.
struct VtPeer {
    int session = 0;      ///< number of the session, unique while the server runs, from 1
    QString application;  ///< as the peer says
    QString machine;      ///< as the peer says
    QString address;      ///< host and port of the peer
    bool isLoopback = false;
    bool isEncrypted = false;
    QString certificateName;  ///< common name of the verified client certificate; empty without one
    QString user;             ///< as whom it was admitted; set by Admit
    QString role;             ///< in which role; set by Admit
    bool isOperator = false;  ///< places are kept for it; set by Admit
    bool hasShare = true;  ///< its user and its host have a share each of what the server has; set by Admit
};

/// Decides who may come in, and what each may read, write and create. Asked by VtServer before anything
/// happens. Main thread. Paths are absolute and normalised: "/a/b", or "/" for the root.
class MCS_CONNECTION_EXPORT IVtAccess {
  public:
    static constexpr int DefaultMaxText = 4096;  ///< UTF-16 code units of a text that a peer may write
    static constexpr int ShortText = 1024;       ///< and of one that it may write anywhere

    virtual ~IVtAccess();

    /// True if nobody comes in without a credential: required for listening beyond loopback.
    virtual bool NeedsCredentials() const = 0;
    /// Admits \a peer, setting its user and role, or refuses with a \a reason that is told to the peer.
    virtual bool Admit(VtPeer& peer, const QString& user, const QString& token, QString* reason) = 0;

    /// Whether \a peer may see all that is at and below \a path.
    virtual bool MayRead(const VtPeer& peer, const QString& path) = 0;
    /// Whether \a peer may write the value at \a path; false with a \a reason that is told to the peer.
    /// Asking changes nothing: it may be asked of what is then not written.
    virtual bool MayWrite(const VtPeer& peer, const QString& path, QString* reason) = 0;
    /// Whether \a peer may create an item at \a path, likewise.
    virtual bool MayCreate(const VtPeer& peer, const QString& path, QString* reason) = 0;
    /// The paths at and below which \a peer may write: told to it, so that it can show what is read-only.
    virtual QStringList WritablePrefixes(const VtPeer& peer) = 0;

    /// A peer is in, or gone (with all that it had asked for).
    virtual void SessionStarted(const VtPeer& peer);
    virtual void SessionEnded(const VtPeer& peer);  ///< Told once for each that was in.
    /// \a peer subscribes \a path or wants a node there; asked whether or not something is there already. A
    /// server may now create what belongs to this peer. Not asked of a peer that only looks.
    /// \return why this peer waits in vain for something to come there; empty if it may come. Told to the
    /// peer if nothing is there.
    virtual QString ProvideNode(const VtPeer& peer, const QString& path);
    /// \a peer has ended its subscription of \a path, or that in which it wanted a node there.
    virtual void NodeReleased(const VtPeer& peer, const QString& path);
    /// \a peer, who may, has written the value at \a path, whose observers were told.
    virtual void ValueWritten(const VtPeer& peer, const QString& path);
    /// How many UTF-16 code units a text may have that \a peer writes or creates at \a path. Not asked of
    /// short ones. Unless overridden DefaultMaxText.
    virtual int MaxTextLength(const VtPeer& peer, const QString& path);
};
