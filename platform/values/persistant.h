// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/platformexport.h>
#include <platform/config/icfg.h>

#include <QtCore/QString>

#include <memory>
#include <vector>

namespace values {

/// Whoever owns the members that a Persistant keeps. (fixed: persistant)
class MCS_PLATFORM_EXPORT PersistantOwner {  // fixed: virtual-order
  public:
    virtual ~PersistantOwner();
    /// Called before the members are written: bring them up to date. May destroy the Persistant.
    virtual void ApplyPersistantBeforeWrite() {}
    /// Called after the members were read: make use of them. May destroy the Persistant.
    virtual void ApplyPersistantAfterRead() {}
};

/// Keeps integer members in the application's configuration store, each under its key in the section named
/// like this object (or in a section below that, for a sub-path). Main thread.
class MCS_PLATFORM_EXPORT Persistant {
  public:
    /// \a owner, which may be null, is not owned and outlives this object, as do the members added.
    Persistant(QString name, PersistantOwner* owner);
    ~Persistant();
    Persistant(const Persistant&) = delete;
    Persistant& operator=(const Persistant&) = delete;

    /// Keeps \a member under \a key; reading sets it to \a fallback where the store has no such key.
    void Add(int* member, const QString& key, int fallback);

    /// Reads every member, then calls the owner's ApplyPersistantAfterRead().
    void Read(const QString& subPath, ICfg::View view);
    /// Calls the owner's ApplyPersistantBeforeWrite(), then writes and commits every member, in one save.
    void Write(const QString& subPath, ICfg::View view);

  private:
    struct Member {
        int* member;
        QString key;
        int fallback;
    };

    std::unique_ptr<ICfg> Section(const QString& subPath, bool create) const;

    QString m_name;
    PersistantOwner* m_owner;
    std::vector<Member> m_members;
    std::shared_ptr<const void>
        m_life;  ///< shared with nobody: whoever watches it sees when this object goes
};

}  // namespace values
