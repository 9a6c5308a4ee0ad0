// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/vtaccessfile.h>

#include <platform/config/textfile.h>

#include <algorithm>

namespace {

QString CertificatePrefix() {
    return QStringLiteral("certificate:");
}

std::optional<VtAccessFile::ERight> FindRight(const QString& word) {
    if (word == QLatin1String("read")) return VtAccessFile::ERight::Read;
    if (word == QLatin1String("write")) return VtAccessFile::ERight::Write;
    if (word == QLatin1String("create")) return VtAccessFile::ERight::Create;
    if (word == QLatin1String("own-policies")) return VtAccessFile::ERight::OwnPolicies;
    return std::nullopt;
}

std::size_t IndexOf(VtAccessFile::ERight right) {
    return static_cast<std::size_t>(right);
}

/// "/" or names between slashes, as paths are asked for.
bool IsNormalisedPath(const QString& path) {
    if (path == QLatin1String("/")) return true;
    return path.startsWith(QLatin1Char('/')) && !path.endsWith(QLatin1Char('/')) &&
           !path.contains(QLatin1String("//"));
}

QString Quoted(const QString& word) {
    const bool needsQuotes =
        word.isEmpty() || word.contains(QLatin1Char(' ')) || word.startsWith(QLatin1Char('#'));
    return needsQuotes ? QLatin1Char('"') + word + QLatin1Char('"') : word;
}

}  // namespace

// Said once more, where MinGW exports them.
constexpr decltype(VtAccessFile::AllRights) VtAccessFile::AllRights;
constexpr decltype(VtAccessFile::MaxUsers) VtAccessFile::MaxUsers;
constexpr decltype(VtAccessFile::MaxRules) VtAccessFile::MaxRules;
constexpr decltype(VtAccessFile::MaxNameLength) VtAccessFile::MaxNameLength;

VtAccessFile::VtAccessFile() : m_nobody(VtTokenHash::Of(QString())) {}

bool VtAccessFile::Load(const QString& path, QString* error) {
    QStringList lines;
    if (!TextFile::ReadLines(path, &lines, error)) return false;
    return Parse(lines.join(QLatin1Char('\n')).toUtf8(), path, error);
}

bool VtAccessFile::Parse(const QByteArray& text, const QString& name, QString* error) {
    QStringList lines;
    if (!TextFile::SplitLines(text, name, &lines, error)) return false;
    const auto fail = [&](int line, const QString& reason) {
        *error = QStringLiteral("%1:%2: %3").arg(name).arg(line).arg(reason);
        return false;
    };
    VtAccessFile parsed;
    for (int i = 0; i < lines.size(); ++i) {
        const QString reason = parsed.ParseLine(lines[i], i + 1);
        if (!reason.isEmpty()) return fail(i + 1, reason);
    }
    int line = 0;
    const QString reason = parsed.FindUserWithoutRules(&line);
    if (!reason.isEmpty()) return fail(line, reason);
    *this = parsed;
    return true;
}

QString VtAccessFile::ParseLine(const QString& line, int number) {
    QStringList words;
    if (!TextFile::SplitWords(line, &words)) return QStringLiteral("a quotation mark has no partner");
    if (words.isEmpty()) return QString();
    if (words[0] == QLatin1String("allow")) return ParseAllow(words);
    if (words[0] == QLatin1String("user")) return ParseUser(words, number);
    return QStringLiteral("'%1' is neither 'allow' nor 'user'").arg(words[0]);
}

QString VtAccessFile::ParseAllow(const QStringList& words) {
    if (words.size() < 4) return QStringLiteral("'allow' needs a role, a right and at least one path");
    if (!IsName(words[1])) return QStringLiteral("'%1' cannot be a role").arg(words[1]);
    const std::optional<ERight> right = FindRight(words[2]);
    if (!right)
        return QStringLiteral("'%1' is neither 'read', 'write', 'create' nor 'own-policies'").arg(words[2]);
    QStringList& paths = m_roles[words[1]][IndexOf(*right)];
    for (int i = 3; i < words.size(); ++i) {
        if (!IsNormalisedPath(words[i])) return QStringLiteral("'%1' is not a path").arg(words[i]);
        if (++m_rules > MaxRules) return QStringLiteral("there are more than %1 paths").arg(MaxRules);
        if (!paths.contains(words[i])) paths << words[i];
    }
    return QString();
}

QString VtAccessFile::ParseUser(const QStringList& words, int number) {
    const QString name = words.value(1);
    const bool isByCertificate = name.startsWith(CertificatePrefix());
    if (words.size() != (isByCertificate ? 3 : 4))
        return isByCertificate ? QStringLiteral("a user by certificate needs a name and a role")
                               : QStringLiteral("'user' needs a name, a role and the hash of a token");
    if (!IsName(name) || name == CertificatePrefix())
        return QStringLiteral("'%1' cannot be a user").arg(name);
    if (!IsName(words[2])) return QStringLiteral("'%1' cannot be a role").arg(words[2]);
    if (m_users.contains(name))
        return QStringLiteral("the user '%1' is in line %2 already").arg(name).arg(m_users[name].line);
    if (m_users.size() >= MaxUsers) return QStringLiteral("there are more than %1 users").arg(MaxUsers);
    User user{words[2], std::nullopt, number};
    if (!isByCertificate) {
        user.hash = VtTokenHash::Parse(words[3]);
        if (!user.hash) return QStringLiteral("the hash of the user '%1' is malformed").arg(name);
    }
    m_users.insert(name, user);
    return QString();
}

QString VtAccessFile::FindUserWithoutRules(int* line) const {
    QString reason;
    for (auto user = m_users.begin(); user != m_users.end(); ++user) {
        if (m_roles.contains(user->role) || (!reason.isEmpty() && user->line > *line)) continue;
        *line = user->line;
        reason = QStringLiteral("nothing is allowed to the role '%1'").arg(user->role);
    }
    return reason;
}

QString VtAccessFile::GetTextOf(const QString& user) const {
    const auto found = m_users.find(user);
    if (found == m_users.end()) return QString();
    QStringList text{found->role, found->hash ? found->hash->ToText() : QString()};
    for (const ERight right : AllRights)
        text << QString::number(static_cast<int>(right)) << GetPrefixes(found->role, right);
    return text.join(QLatin1Char('\n'));
}

bool VtAccessFile::IsSlow(const QString& user) const {
    const auto found = m_users.find(user);
    return found != m_users.end() && found->hash.has_value() && found->hash->IsSlow();
}

std::optional<QString> VtAccessFile::FindRole(const QString& user, const QString& token) const {
    const auto found = m_users.find(user);
    const bool isKnown = found != m_users.end() && found->hash.has_value();
    const bool isRight = (isKnown ? *found->hash : m_nobody).Matches(token);
    if (!isKnown || !isRight) return std::nullopt;
    return found->role;
}

std::optional<QString> VtAccessFile::FindRoleOfCertificate(const QString& commonName) const {
    const auto found = m_users.find(CertificateUser(commonName));
    if (commonName.isEmpty() || found == m_users.end()) return std::nullopt;
    return found->role;
}

bool VtAccessFile::Allows(const QString& role, ERight right, const QString& path) const {
    const QStringList prefixes = GetPrefixes(role, right);
    return std::any_of(prefixes.begin(), prefixes.end(),
                       [&path](const QString& prefix) { return IsBelow(path, prefix); });
}

QStringList VtAccessFile::GetPrefixes(const QString& role, ERight right) const {
    const auto found = m_roles.find(role);
    return found != m_roles.end() ? (*found)[IndexOf(right)] : QStringList();
}

QString VtAccessFile::UserLine(const QString& user, const QString& role, const VtTokenHash& hash) {
    return QStringLiteral("user %1 %2 %3").arg(Quoted(user), Quoted(role), hash.ToText());
}

QString VtAccessFile::CertificateUser(const QString& commonName) {
    return CertificatePrefix() + commonName;
}

bool VtAccessFile::IsName(const QString& name) {
    return !name.isEmpty() && name.size() <= MaxNameLength && !name.contains(QLatin1Char('"')) &&
           name.trimmed() == name &&
           std::all_of(name.begin(), name.end(), [](QChar character) { return character.isPrint(); });
}

bool VtAccessFile::IsBelow(const QString& path, const QString& prefix) {
    if (prefix == QLatin1String("/")) return true;
    return path.startsWith(prefix) &&
           (path.size() == prefix.size() || path.at(prefix.size()) == QLatin1Char('/'));
}
