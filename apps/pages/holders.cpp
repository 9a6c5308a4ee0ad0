// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/holders.h>

#include <apps/common/frequencytext.h>
#include <apps/pages/serverkeys.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>

#include <platform/device/stddevicedefinition.h>
#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/values/valuenumeric.h>
#include <platform/values/valueselection.h>
#include <platform/widgets/valuetext.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QStringList>

namespace {

constexpr int MaxHolderLength = 40;   // characters of a name, and of what its owner does
constexpr std::size_t MostNamed = 5;  // a question is to be read, not scrolled

template <class V>
const V* FindStatus(const QString& path, QLatin1String key) {
    const QString status = path + QLatin1Char('/') + mcskeys::Status + QLatin1Char('/') + key;
    return dynamic_cast<const V*>(values::Tree::Instance()->FindItem(status));
}

bool Flag(const QString& path, QLatin1String key) {
    const auto* const flag = FindStatus<values::Value<bool>>(path, key);
    return flag != nullptr && flag->GetValue();
}

}  // namespace

holders::Holder holders::At(const QString& path) {
    Holder holder;
    holder.name = valuetext::Shortened(path.section(QLatin1Char('/'), -1), MaxHolderLength);
    holder.isMaster = Flag(path, mcskeys::IsMaster);
    holder.isWatching = Flag(path, mcskeys::IsWatchingMaster);
    if (const auto* const type = FindStatus<values::Value<QString>>(path, mcskeys::OperationType))
        holder.does = valuetext::Shortened(valuetext::Content(*type), MaxHolderLength);
    const auto* const tuned = FindStatus<values::ValueNumeric<double>>(path, serverkeys::TunedFrequency);
    if (tuned != nullptr && tuned->GetValue() > 0)
        holder.tunedTo = QStringLiteral(" (%1 MHz)").arg(FrequencyText::InMegahertz(tuned->GetValue()));
    const auto* const mode = FindStatus<values::ValueSelection>(path, mcskeys::OperationMode);
    holder.isIdle = !holder.isMaster && (mode == nullptr || mode->GetCurrentKey() == OperationIdle);
    return holder;
}

QString holders::TreeOf(const QString& path) {
    return path.section(QLatin1Char('/'), 0, -3);
}

std::vector<holders::Holder> holders::Find(const QString& basePath,
                                           const std::function<bool(const Holder&)>& isMeant) {
    std::vector<Holder> found;
    for (const QLatin1String segment : {mcskeys::StaticMpxORVs, mcskeys::DynamicMpxORVs}) {
        const QString path = basePath + QLatin1Char('/') + segment;
        const values::Node* const node = values::Tree::Instance()->FindNode(path);
        const values::TreeItem* item = node != nullptr ? node->GetFirstChild() : nullptr;
        for (; item != nullptr; item = item->GetNextSibling()) {
            const Holder holder = At(path + QLatin1Char('/') + item->GetName());
            if (item->IsNode() && isMeant(holder)) found.push_back(holder);
        }
    }
    return found;
}

QString holders::ToText(const std::vector<Holder>& holders) {
    QStringList texts;
    for (std::size_t i = 0; i < holders.size() && i < MostNamed; ++i)
        texts += QStringLiteral("%1 (%2)").arg(holders[i].name, holders[i].does);
    if (holders.size() > MostNamed)
        texts += QCoreApplication::translate("Holders", "%1 more").arg(holders.size() - MostNamed);
    return texts.join(QStringLiteral(", "));
}

QString holders::LossOfWatchers(const QString& basePath) {
    const std::vector<Holder> watchers =
        Find(basePath, [](const Holder& holder) { return holder.isWatching; });
    if (watchers.empty()) return QString();
    return QCoreApplication::translate("Holders",
                                       "These read from the master's range and lose their frequency: %1.")
        .arg(ToText(watchers));
}
