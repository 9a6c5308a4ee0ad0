// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/plant/notloaded.h>

#include <devicecontrol/multichannelserver/common/gts/gtskeys.h>

#include <platform/app/trace.h>
#include <platform/config/icfg.h>

#include <QtCore/QStringList>

#include <algorithm>
#include <map>
#include <memory>

namespace {

using KeysByNumber = std::map<int, QStringList>;

/// The number of the entry whose section \a key is in; -1 if it is in none.
int NumberOf(const QString& key) {
    const QString section = key.section(QLatin1Char('/'), 0, 0);
    const QString prefix = QString(gtskeys::Module).arg(QString());
    if (section.size() == key.size() || !section.startsWith(prefix)) return -1;
    bool isNumber = false;
    const int number = section.mid(prefix.size()).toInt(&isNumber);
    return isNumber && section == QString(gtskeys::Module).arg(number) ? number : -1;
}

/// The keys of the entries numbered below \a count that are not in \a own.
KeysByNumber Find(ICfg& gts, const std::set<QString>& own, int count) {
    KeysByNumber found;
    const QStringList keys = gts.GetKeys();
    for (const QString& key : keys) {
        const int number = NumberOf(key);
        if (number >= 0 && number < count && own.count(QString(gtskeys::Module).arg(number)) == 0)
            found[number] += key;
    }
    return found;
}

QString FreeName(ICfg& kept, int number) {
    const auto isFree = [&kept](const QString& name) {
        return std::unique_ptr<ICfg>(kept.OpenSection(name)) == nullptr;
    };
    QString name = QString(gtskeys::Module).arg(number);
    for (int other = 0; !isFree(name); ++other)
        name = QString(gtskeys::Module).arg(other);
    return name;
}

/// One line for all of them, which tells the first.
void Trace(const QStringList& names) {
    constexpr int MaxNamed = 20;
    if (!ErrorHandler::Instance().IsTraced(ErrorHandler::TraceWarnings)) return;
    QString list = names.mid(0, MaxNamed).join(QStringLiteral(", "));
    if (names.size() > MaxNamed) list += QStringLiteral(" ...");
    MCS_TRACE(QStringLiteral("Configuration: %1 entries of %2 could not be used and are kept in %2/%3: %4")
                  .arg(QString::number(names.size()), gtskeys::Gts, gtskeys::NotLoaded, list));
}

}  // namespace

void notloaded::Keep(ICfg& gts, const std::set<QString>& own, int count) {
    const KeysByNumber found = Find(gts, own, std::max(count, gts.ReadInt(gtskeys::ModuleCount, 0)));
    if (found.empty()) return;
    const std::unique_ptr<ICfg> kept(gts.ProvideSection(gtskeys::NotLoaded));
    QStringList names;
    for (const auto& [number, keys] : found) {
        const QString section = QString(gtskeys::Module).arg(number);
        const QString name = FreeName(*kept, number);
        for (const QString& key : keys)
            kept->WriteString(name + key.mid(section.size()), gts.ReadString(key, QString()));
        gts.RemoveSection(section);
        names += name == section ? name : QStringLiteral("%1 as %2").arg(section, name);
    }
    Trace(names);
}
