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
/// - server.future: does not hold yet; server.rsa: good, with a key of RSA
/// - server.localhost: is "localhost" by its common name, and 127.0.0.1 by its alternative name
/// - server.names: "tower.example.org", "*.vans.example.org" and ::1 by its alternative names
/// - client.twonames, client.nameless: with two common names, with none
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
    /// What a certificate is to say.
    struct Order {
        const char* name;
        const char* authority = "authority";
        const char* from = "20200101000000Z";
        const char* to = "20991231235959Z";
        const char* subject = nullptr;  ///< its name as the common name unless given
        const char* alternativeNames = "IP:127.0.0.1";
    };

    bool MakeKey(const QString& name);
    bool MakeRsaKey(const QString& name);
    bool MakeAuthority(const QString& name);
    bool Issue(const Order& order);
    bool WriteConfiguration();

    QTemporaryDir m_folder;
    QString m_error;
};
