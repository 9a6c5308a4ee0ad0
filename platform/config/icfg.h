// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/platformexport.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

/// One section of a configuration store: keys with contents, and sections below. Main thread.
///
/// Reading never fails: a key that is missing, or holds something else than what is asked for, reads as the
/// fallback. What is written is read back at once, also through other sections of the same store; it is in
/// the file, safe from a killed process, once CommitKey returned true.
///
/// Key names are taken as they are, with their case, except that "/" in a name leads into the section below.
class MCS_PLATFORM_EXPORT ICfg {
  public:
    /// Which set of contents is meant where an application keeps several; there is one.
    enum View { Default = 0 };

    virtual ~ICfg();

    virtual QString ReadString(const QString& key, const QString& fallback) = 0;  ///< what stands at \a key
    virtual int ReadInt(const QString& key, int fallback) = 0;                    ///< decimal
    virtual bool ReadBool(const QString& key, bool fallback) = 0;                 ///< true, false, 1 or 0
    virtual void WriteString(const QString& key, const QString& content) = 0;     ///< any text
    virtual void WriteInt(const QString& key, int content) = 0;                   ///< as decimal
    virtual void WriteBool(const QString& key, bool content) = 0;                 ///< as true or false
    /// Brings what was written to the file, under \a key and everywhere else in the store; within a CfgSave
    /// at its end. False if it cannot be written, with a trace for the first of several times; it is then
    /// kept for the next commit.
    virtual bool CommitKey(const QString& key) = 0;

    /// The section \a name below this one, owned by the caller; null when absent.
    virtual ICfg* OpenSection(const QString& name) = 0;
    /// The section \a name below this one, owned by the caller, created when absent. A section in which
    /// nothing was written lasts as long as the store is open.
    virtual ICfg* ProvideSection(const QString& name) = 0;
    /// Removes the section \a name with all that is in it.
    virtual void RemoveSection(const QString& name) = 0;
    /// The names of all keys of this section and of those below, each with the way there: "Name",
    /// "Section/Key". In a fixed order.
    virtual QStringList GetKeys() = 0;
};
