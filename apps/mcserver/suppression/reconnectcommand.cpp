// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/reconnectcommand.h>

#include <apps/mcserver/log/peertext.h>
#include <apps/mcserver/log/serverlog.h>
#include <apps/mcserver/suppression/modulechanges.h>
#include <apps/pages/serverkeys.h>

#include <devicecontrol/multichannelserver/common/gts/moduleview.h>
#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>
#include <devicecontrol/multichannelserver/common/mcskeys.h>

#include <platform/values/valueaccess.h>

#include <QtCore/QStringList>

namespace {

constexpr int MostNamed = 10;  // an event is one line

/// "Tower mast, Apron", of many the first ones.
QString NamesOf(const QStringList& modules) {
    QStringList names;
    for (const QString& module : modules.mid(0, MostNamed))
        names += peertext::Shown(module);
    if (modules.size() > MostNamed) names += QStringLiteral("\u2026");
    return names.join(QStringLiteral(", "));
}

}  // namespace

ReconnectCommand::ReconnectCommand(SuppressionPlant& plant, ServerLog& log, ModuleChanges& changes)
    : m_plant(plant),
      m_log(log),
      m_changes(changes),
      m_button(*this, values::ProvideValue<values::Value<bool>>(Path(), false, true, nullptr)) {}

QString ReconnectCommand::Path() {
    return mcskeys::Join(mcskeys::DefaultBasePath(mcskeys::Command), serverkeys::ReconnectModules);
}

void ReconnectCommand::Update(Observable* source, TChangeCode code) {
    if (m_button.EndIfGoingAway(source, code)) return;
    if (!m_button.Is(source) || code != changecode::ContentChanged || !m_button->GetValue()) return;
    m_button->SetValue(false, this);
    m_log.WriteFrom(Path(), Report());
    m_changes.NoteReconnect();
    m_plant.ConnectLostModules();
}

/// What it does, and does not: who disconnected a module by hand had a reason.
CodedText ReconnectCommand::Report() const {
    QStringList lost;
    QStringList switchedOff;
    m_plant.ForEachModule([&](const ModuleView& module) {
        if (module.state == EModuleState::Error) lost += module.GetName();
        if (module.isSwitchedOff) switchedOff += module.GetName();
    });
    const CodedText rest =
        switchedOff.isEmpty() ? CodedText() : CodedText(ECode::StayDisconnected, {NamesOf(switchedOff)});
    if (lost.isEmpty()) return {ECode::NoModuleInError, {rest, m_log.ByActor()}};
    return {ECode::ModulesConnectedAnew, {NamesOf(lost), rest, m_log.ByActor()}};
}
