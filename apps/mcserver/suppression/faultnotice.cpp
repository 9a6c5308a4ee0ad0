// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/faultnotice.h>

FaultNotice::FaultNotice(const std::vector<CodedText>& faults, QWidget* parent) : NoticeBar(parent) {
    setObjectName(QStringLiteral("ConfigurationFaults"));
    if (faults.empty()) return;
    QString text = tr("Not all of the configuration file is in use:");
    for (std::size_t i = 0; i < faults.size() && i < MaxShown; ++i)
        text += QLatin1Char('\n') + faults[i].Translated();
    if (faults.size() > MaxShown)
        text += QLatin1Char('\n') + tr("The log tells of %1 more.").arg(faults.size() - MaxShown);
    Tell(ESeverity::Warning, text);
}
