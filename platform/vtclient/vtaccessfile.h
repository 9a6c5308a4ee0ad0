// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/connectionexport.h>
#include <platform/vtclient/vttokenhash.h>

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <array>
#include <optional>

/// Who may come in, and what each role may do: the rules of a server, from a text file. docs/server.md
/// describes the file. What no rule allows is not allowed. Main thread.
class MCS_CONNECTION_EXPORT VtAccessFile {
  public:
    enum class ERight {
        Read,
        Write,
        Create,
        OwnPolicies  ///< to switch what is allowed to a thing that the same user uses
    };
    static constexpr std::array<ERight, 4> AllRights = {ERight::Read, ERight::Write, ERight::Create,
                                                        ERight::OwnPolicies};

    static constexpr int MaxUsers = 10000;
    static constexpr int MaxRules = 10000;  ///< paths, over all roles and rights
    static constexpr int MaxNameLength = 256;

    VtAccessFile();

    /// Takes the rules in \a path. False with the reason in \a error, which names file and line; then nothing
    /// is changed.
    bool Load(const QString& path, QString* error);
    /// The same for \a text, which is called \a name in errors.
    bool Parse(const QByteArray& text, const QString& name, QString* error);

    /// Whether it takes milliseconds to check a token of \a user.
    bool IsSlow(const QString& user) const;
    /// The role of \a user if \a token is that user's. Takes as long for a user that does not exist, unless
    /// the check is slow.
    std::optional<QString> FindRole(const QString& user, const QString& token) const;
    /// The role of whoever holds a certificate of that common name.
    std::optional<QString> FindRoleOfCertificate(const QString& commonName) const;

    /// Whether \a role may do that at \a path, which is absolute and normalised.
    bool Allows(const QString& role, ERight right, const QString& path) const;
    /// The paths at and below which \a role may do that.
    QStringList GetPrefixes(const QString& role, ERight right) const;

    /// All that the file says of \a user, as one text: another text, other rights or another credential.
    /// Empty for a user that it does not know.
    QString GetTextOf(const QString& user) const;

    /// The line with which a file admits \a user in \a role by \a hash.
    static QString UserLine(const QString& user, const QString& role, const VtTokenHash& hash);
    /// As which user a file knows whoever holds a certificate of that common name.
    static QString CertificateUser(const QString& commonName);
    /// Whether \a name can be a user or a role.
    static bool IsName(const QString& name);
    /// Whether \a path lies at or below \a prefix.
    static bool IsBelow(const QString& path, const QString& prefix);

  private:
    struct User {
        QString role;
        std::optional<VtTokenHash> hash;  ///< none: by certificate only
        int line = 0;
    };
    using Role = std::array<QStringList, AllRights.size()>;  ///< paths by right

    /// What a statement came to: empty, or what is wrong with it.
    QString ParseLine(const QString& line, int number);
    QString ParseAllow(const QStringList& words);
    QString ParseUser(const QStringList& words, int number);
    QString FindUserWithoutRules(int* line) const;

    QHash<QString, Role> m_roles;
    QHash<QString, User> m_users;
    int m_rules = 0;
    VtTokenHash m_nobody;  ///< what tokens of unknown users are compared with
};
