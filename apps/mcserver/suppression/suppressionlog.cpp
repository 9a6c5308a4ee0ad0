// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/suppressionlog.h>

#include <apps/mcserver/log/serverlog.h>

#include <devicecontrol/multichannelserver/common/gts/modulefailure.h>

void SuppressionLog::OnModuleFailed(const ModuleFailure& failure) {
    QString line = QStringLiteral("GTS DataModule %1/%2 error: %3 (%4)")
                       .arg(failure.module.GetName(), failure.module.address, failure.text,
                            QString::number(failure.code));
    if (!failure.addressFault.isEmpty()) line += QStringLiteral(": ") + failure.addressFault;
    m_log.WriteFrom(failure.module.NodeName(), line);
}

void SuppressionLog::OnModuleAnswersAgain(const ModuleIdentity& module) {
    m_log.WriteFrom(
        module.NodeName(),
        QStringLiteral("GTS DataModule %1/%2 answers again; it stays in error until it is connected")
            .arg(module.GetName(), module.address));
}
