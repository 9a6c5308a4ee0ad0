// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/overview/frequencyusers.h>

#include <apps/pages/page.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>

#include <platform/device/stddevicedefinition.h>
#include <platform/values/tree.h>
#include <platform/values/visit.h>

struct FrequencyUsers::Watch {
    Watch(FrequencyUsers& users, QString nodeName, const QString& path)
        : name(std::move(nodeName)),
          tuned(users, Any),
          since(users, Any),
          mode(users, Any),
          requested(users, Any),
          isMaster(users, Any) {
        tuned.SetPath(path + QLatin1String("/Status/TunedFrequency"));
        since.SetPath(path + QLatin1String("/Status/TunedSince"));
        mode.SetPath(path + QLatin1String("/Status/OperationMode"));
        requested.SetPath(path + QLatin1String("/Request/Frequency"));
        isMaster.SetPath(path + QLatin1String("/Status/IsMaster"));
    }

    static bool Any(const values::ValueBase&) { return true; }
    template <class V>
    static const V* As(const PathBinding& binding) {
        return dynamic_cast<const V*>(binding.GetValue());
    }

    /// 0 if it is not tuned; of servers that do not tell it, what was asked for last.
    double Frequency() const {
        using Number = values::ValueNumeric<double>;
        if (const auto* const number = As<Number>(tuned)) return number->GetValue();
        const auto* const does = As<values::ValueSelection>(mode);
        const auto* const number = As<Number>(requested);
        const bool isTuned = does != nullptr && does->GetCurrentKey() == OperationFfm && number != nullptr;
        return isTuned ? number->GetValue() : 0;
    }

    QString name;
    PathBinding tuned;
    PathBinding since;
    PathBinding mode;
    PathBinding requested;
    PathBinding isMaster;
};

FrequencyUsers::FrequencyUsers(QObject* parent) : QObject(parent) {}

FrequencyUsers::~FrequencyUsers() = default;

void FrequencyUsers::Bind(const QString& basePath, EMCSControlTreeSegments segments) {
    m_segments.clear();
    for (const EMCSControlTreeSegments segment : {StaticMpxORVsSegment, DynamicMpxORVsSegment}) {
        const QString path = Page::SegmentPath(basePath, segments, segment);
        values::Node* const node = path.isEmpty() ? nullptr : values::Tree::Instance()->FindNode(path);
        IObserver& self = *this;
        if (node != nullptr) m_segments.emplace_back(self, node);
    }
    WatchAll();
}

void FrequencyUsers::Update(Observable* source, TChangeCode code) {
    for (Observation<values::Node>& segment : m_segments)
        segment.EndIfGoingAway(source, code);
    const bool isOther = code == changecode::ChildrenAdded || code == changecode::ChildrenRemoved ||
                         code == changecode::ChildRenamed || code == changecode::GoingAway;
    if (isOther) WatchAll();
}

void FrequencyUsers::OnBindingChanged(PathBinding&, TChangeCode) {
    Q_EMIT Changed();
}

/// Those that are watched already stay so: many may come one by one.
void FrequencyUsers::WatchAll() {
    std::map<QString, std::unique_ptr<Watch>> watches;
    for (const Observation<values::Node>& segment : m_segments) {
        const values::TreeItem* item = segment.Get() != nullptr ? segment->GetFirstChild() : nullptr;
        for (; item != nullptr; item = item->GetNextSibling()) {
            if (!item->IsNode()) continue;
            const QString path = item->GetPathName();
            std::unique_ptr<Watch>& watch = watches[path];
            if (const auto known = m_watches.find(path); known != m_watches.end())
                watch = std::move(known->second);
            if (!watch) watch = std::make_unique<Watch>(*this, item->GetName(), path);
        }
    }
    m_watches = std::move(watches);
    Q_EMIT Changed();
}

std::vector<FrequencyUsers::User> FrequencyUsers::Find() const {
    std::vector<User> users;
    for (const auto& [path, watch] : m_watches) {
        const double hz = watch->Frequency();
        if (!(hz > 0)) continue;
        const auto* const isMaster = Watch::As<values::Value<bool>>(watch->isMaster);
        const auto* const since = Watch::As<values::Value<QString>>(watch->since);
        users.push_back({watch->name, hz, isMaster != nullptr && isMaster->GetValue(),
                         since != nullptr ? since->GetValue() : QString()});
    }
    return users;
}
