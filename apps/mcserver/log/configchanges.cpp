// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/log/configchanges.h>

#include <apps/mcserver/log/peertext.h>
#include <apps/mcserver/log/savereport.h>
#include <apps/mcserver/log/serverlog.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>

#include <platform/values/tree.h>
#include <platform/values/visit.h>

#include <utility>

namespace {

QString ContentOf(const values::TreeItem& item) {
    QString text;
    values::Visit(item, values::Overloaded{
                            [](const values::Node&) {},
                            [&text](const values::Value<bool>& value) {
                                text = value.GetValue() ? QStringLiteral("true") : QStringLiteral("false");
                            },
                            [&text](const values::Value<QString>& value) {
                                text =
                                    QLatin1Char('\'') + peertext::Shown(value.GetValue()) + QLatin1Char('\'');
                            },
                            [&text](const values::ValueSelection& value) { text = value.GetCurrentText(); },
                            [](const values::ValueList<double>&) {},
                            [&text](const values::ValueNumeric<double>& value) {
                                constexpr int Digits = 15;
                                text = QString::number(value.GetValue(), 'g', Digits);
                            },
                            [&text](const auto& value) { text = QString::number(value.GetValue()); },
                        });
    return text;
}

/// No key of today is one, but keys are added faster than places that have to know of them.
bool MayBeSecret(const QString& name) {
    for (const char* const word : {"password", "secret", "token", "credential", "private"})
        if (name.contains(QLatin1String(word), Qt::CaseInsensitive)) return true;
    return false;
}

}  // namespace

void ConfigChanges::Begin(const QString& basePath) {
    values::Node* const node = values::Tree::Instance()->FindNode(basePath);
    for (values::TreeItem* item = node != nullptr ? node->GetFirstChild() : nullptr; item != nullptr;
         item = item->GetNextSibling()) {
        auto* const value = dynamic_cast<values::ValueBase*>(item);
        const QString name = item->GetName();
        const bool isButton = name == mcskeys::SaveConfig || name == SaveReport::AnswerName();
        if (value == nullptr || isButton) continue;
        m_keys.emplace(value, Key{name, ContentOf(*value), Observation<values::ValueBase>(*this, value)});
    }
}

void ConfigChanges::Update(Observable* source, TChangeCode code) {
    const auto key = m_keys.find(source);
    if (key == m_keys.end()) return;
    if (key->second.value.EndIfGoingAway(source, code))
        m_keys.erase(key);
    else if (code == changecode::ContentChanged)
        Tell(key->second);
}

void ConfigChanges::Tell(Key& key) {
    const QString before = std::exchange(key.content, ContentOf(*key.value));
    if (before == key.content) return;
    const QString limited = QStringLiteral("Config/") + key.name;
    if (MayBeSecret(key.name))
        m_log.WriteFrom(limited, {ECode::ConfigSecretChanged, {key.name, m_log.ByActor()}});
    else
        m_log.WriteFrom(limited, {ECode::ConfigChanged, {key.name, before, key.content, m_log.ByActor()}});
}
