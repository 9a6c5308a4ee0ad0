// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/suppressionalarm.h>

#include <apps/mcserver/suppression/reconnectcommand.h>

#include <devicecontrol/multichannelserver/common/gts/moduleview.h>
#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>

#include <chrono>

SuppressionAlarm::SuppressionAlarm(const SuppressionPlant& plant, QWidget* parent)
    : UnsupervisedBar(parent), m_plant(plant) {
    constexpr std::chrono::milliseconds interval(100);
    BindReconnect(ReconnectCommand::Path());
    m_look.setSingleShot(true);
    m_look.setInterval(interval);
    connect(&m_look, &QTimer::timeout, this, &SuppressionAlarm::Look);
    connect(&plant, &SuppressionPlant::SignalStatesChanged, this, [this] {
        if (!m_look.isActive()) m_look.start();
    });
    connect(&plant, &QObject::destroyed, &m_look, &QTimer::stop);
    m_look.start();  // by then those that answer have
}

void SuppressionAlarm::Look() {
    const std::vector<double> lost = m_plant.GetUnsupervisedFrequencies();
    ShowLost(&lost);
    bool isAnyInError = false;
    m_plant.ForEachModule(
        [&](const ModuleView& module) { isAnyInError |= module.state == EModuleState::Error; });
    const ESeverity severity = !lost.empty()  ? ESeverity::Act
                               : isAnyInError ? ESeverity::Look
                                              : ESeverity::Ok;
    const QString word = lost.empty() ? QString() : tr("%1 NOT SUPERVISED").arg(lost.size());
    if (severity == m_severity && word == m_word) return;
    m_severity = severity;
    m_word = word;
    Q_EMIT Judged(severity, word);
}
