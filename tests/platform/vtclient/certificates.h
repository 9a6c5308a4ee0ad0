// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

/// Certificates and keys in a folder that goes with the program, made by the command line tool of OpenSSL:
/// whatever a test wants to show or to distrust. Each name has a ".pem" and a ".key".
///
/// - authority: whom both ends trust; stranger: an authority that nobody does
/// - server, client: good; server.expired, client.expired: from the authority, long over
/// - server.stranger, client.stranger: from the other authority
class Certificates {
  public:
    static const Certificates& Instance();
    Certificates(const Certificates&) = delete;
    Certificates& operator=(const Certificates&) = delete;

    /// What went wrong while they were made; empty if nothing did.
    const QString& Error() const { return m_error; }
    QString File(const char* name) const { return m_folder.filePath(QString::fromLatin1(name)); }

  private:
    Certificates();

    bool Run(const QStringList& arguments);
    bool MakeKey(const QString& name);
    bool MakeAuthority(const QString& name);
    bool Issue(const QString& name, const QString& authority, const QString& from, const QString& to);
    bool WriteConfiguration();

    QTemporaryDir m_folder;
    QString m_error;
};
