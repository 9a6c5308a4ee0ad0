// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/session/serverfacts.h>

#include <platform/device/stddevicedefinition.h>
#include <platform/values/visit.h>
#include <platform/widgets/valuetext.h>

#include <QtCore/QLatin1String>

#include <algorithm>

namespace {

struct Place {
    ServerFacts::EFact fact;
    bool isOwn;  ///< below the node of the MpxORV, else below that of the server's tree
    const char* path;
};

using EFact = ServerFacts::EFact;

// clang-format off
constexpr Place Places[] = {
    {EFact::BootState,               false, "/Status/BootState"},
    {EFact::OperationMode,           false, "/Status/OperationMode"},
    {EFact::IsOnline,                false, "/Status/Online"},
    {EFact::ConnectionState,         false, "/Status/ConnectionState"},
    {EFact::ConnectionStateCode,     false, "/Status/ConnectionStateCode"},
    {EFact::ShallBeConnected,        false, "/Command/ShallBeConnected"},
    {EFact::DeviceName,              false, "/Config/DeviceName"},
    {EFact::MasterName,              false, "/Status/Master/Name"},
    {EFact::MasterSince,             false, "/Status/Master/Since"},
    {EFact::MasterRangeFrom,         false, "/Status/Master/RangeFrom"},
    {EFact::MasterRangeTo,           false, "/Status/Master/RangeTo"},
    {EFact::ModuleCount,             false, "/Status/Suppression/ModuleCount"},
    {EFact::AnsweringModules,        false, "/Status/Suppression/AnsweringModules"},
    {EFact::KeyedFrequencies,        false, "/Status/Suppression/KeyedFrequencies"},
    {EFact::UnsupervisedFrequencies, false, "/Status/Suppression/UnsupervisedFrequencies"},
    {EFact::OwnMode,                 true,  "/Status/OperationMode"},
    {EFact::OwnFrequency,            true,  "/Request/Frequency"},
    {EFact::OwnTunedFrequency,       true,  "/Status/TunedFrequency"},
    {EFact::OwnTunedSince,           true,  "/Status/TunedSince"},
    {EFact::OwnAnswerCode,           true,  "/Request/AnswerCode"},
    {EFact::OwnIsMaster,             true,  "/Status/IsMaster"},
    {EFact::OwnBlanking,             true,  "/Blanking"},
    {EFact::OwnBlankingBy,           true,  "/Status/BlankingSwitchedBy"},
};
// clang-format on

}  // namespace

ServerFacts::ServerFacts(std::function<void()> changed) : m_changed(std::move(changed)) {
    PathBinding::IListener& listener = *this;
    for (std::unique_ptr<PathBinding>& binding : m_bindings)
        binding = std::make_unique<PathBinding>(listener, [](const values::ValueBase&) { return true; });
}

void ServerFacts::BindServer(const QString& basePath) {
    Bind(basePath, false);
}

void ServerFacts::BindMpxOrv(const QString& path) {
    Bind(path, true);
}

void ServerFacts::Bind(const QString& basePath, bool isOwn) {
    m_isBinding = true;
    for (const Place& place : Places) {
        if (place.isOwn != isOwn) continue;
        const QString path = basePath.isEmpty() ? QString() : basePath + QLatin1String(place.path);
        m_bindings[static_cast<std::size_t>(place.fact)]->SetPath(path);
    }
    m_isBinding = false;
    m_changed();
}

void ServerFacts::OnBindingChanged(PathBinding&, TChangeCode) {
    if (!m_isBinding) m_changed();
}

bool ServerFacts::IsStale() const {
    return std::any_of(m_bindings.begin(), m_bindings.end(), [](const std::unique_ptr<PathBinding>& binding) {
        return binding->GetState() == EBindingState::Stale;
    });
}

values::ValueBase* ServerFacts::Value(EFact fact) const {
    return m_bindings[static_cast<std::size_t>(fact)]->GetValue();
}

template <class V>
const V* ServerFacts::As(EFact fact) const {
    return dynamic_cast<const V*>(Value(fact));
}

std::optional<bool> ServerFacts::Flag(EFact fact) const {
    const auto* const flag = As<values::Value<bool>>(fact);
    return flag != nullptr ? std::make_optional(flag->GetValue()) : std::nullopt;
}

std::optional<double> ServerFacts::Number(EFact fact) const {
    if (const auto* const number = As<values::Value<int>>(fact)) return number->GetValue();
    if (const auto* const number = As<values::ValueNumeric<int>>(fact)) return number->GetValue();
    if (const auto* const number = As<values::ValueNumeric<double>>(fact)) return number->GetValue();
    return std::nullopt;
}

std::optional<QString> ServerFacts::Text(EFact fact) const {
    const auto* const text = As<values::Value<QString>>(fact);
    return text != nullptr ? std::make_optional(valuetext::Content(*text)) : std::nullopt;
}

std::optional<int> ServerFacts::Key(EFact fact) const {
    const auto* const selection = As<values::ValueSelection>(fact);
    return selection != nullptr ? std::make_optional(selection->GetCurrentKey()) : std::nullopt;
}

const std::vector<double>* ServerFacts::List(EFact fact) const {
    const auto* const list = As<values::ValueList<double>>(fact);
    return list != nullptr ? &list->GetItems() : nullptr;
}

std::optional<double> ServerFacts::TunedFrequency() const {
    std::optional<double> hz = Number(EFact::OwnTunedFrequency);
    if (!hz && Key(EFact::OwnMode) == OperationFfm) hz = Number(EFact::OwnFrequency);
    return hz && *hz > 0 ? hz : std::nullopt;
}

bool ServerFacts::Has(EFact fact, double hz) const {
    const std::vector<double>* const list = List(fact);
    return list != nullptr && std::find(list->begin(), list->end(), hz) != list->end();
}
