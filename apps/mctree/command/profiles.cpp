// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/command/profiles.h>

#include <QtCore/QFile>
#include <QtCore/QStringList>

#include <algorithm>

namespace mctree {

namespace {

constexpr qint64 LargestProfiles = 262144;  // bytes

QString Unquoted(const QString& text) {
    const bool isQuoted =
        text.size() >= 2 && text.startsWith(QLatin1Char('"')) && text.endsWith(QLatin1Char('"'));
    return isQuoted ? text.mid(1, text.size() - 2) : text;
}

}  // namespace

QString Profiles::Read(const QString& fileName) {
    m_profiles.clear();
    QFile file(fileName);
    if (!file.exists()) return QString();
    if (!file.open(QIODevice::ReadOnly)) return QStringLiteral("%1: %2").arg(fileName, file.errorString());
    const QByteArray bytes = file.read(LargestProfiles + 1);
    if (bytes.size() > LargestProfiles) return QStringLiteral("%1 is too large").arg(fileName);
    int number = 0;
    for (const QString& line : QString::fromUtf8(bytes).split(QLatin1Char('\n'))) {
        const QString error = ReadLine(line.trimmed(), ++number);
        if (!error.isEmpty()) return QStringLiteral("%1:%2: %3").arg(fileName).arg(number).arg(error);
    }
    return QString();
}

QString Profiles::ReadLine(const QString& line, int number) {
    if (line.isEmpty() || line.startsWith(QLatin1Char('#')) || line.startsWith(QLatin1Char(';')))
        return QString();
    if (line.startsWith(QLatin1Char('['))) {
        const QString name = line.mid(1, line.size() - 2).trimmed();
        if (!line.endsWith(QLatin1Char(']')) || name.isEmpty()) return QStringLiteral("no name in brackets");
        if (Find(name) != nullptr) return QStringLiteral("[%1] is there twice").arg(name);
        m_profiles.push_back({name, {}});
        return QString();
    }
    const int equals = line.indexOf(QLatin1Char('='));
    if (equals < 1) return QStringLiteral("no NAME = VALUE");
    if (m_profiles.empty()) return QStringLiteral("a name of a server in brackets must come first");
    m_profiles.back().settings.push_back(
        {line.left(equals).trimmed(), Unquoted(line.mid(equals + 1).trimmed()), number});
    return QString();
}

const std::vector<Profiles::Setting>* Profiles::Find(const QString& profile) const {
    const auto found = std::find_if(m_profiles.begin(), m_profiles.end(),
                                    [&profile](const Profile& known) { return known.name == profile; });
    return found != m_profiles.end() ? &found->settings : nullptr;
}

QString Profiles::Names() const {
    QStringList names;
    for (const Profile& profile : m_profiles)
        names += profile.name;
    return names.join(QStringLiteral(", "));
}

}  // namespace mctree
