// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/frequencylist.h>

#include <apps/common/frequencytext.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QStringList>

QString frequencylist::Of(const std::vector<double>& hz) {
    constexpr std::size_t most = 8;  // more are not read at a glance
    QStringList texts;
    for (std::size_t i = 0; i < hz.size() && i < most; ++i)
        texts += QStringLiteral("%1 MHz").arg(FrequencyText::InMegahertz(hz[i], 0));
    if (hz.size() > most)
        texts += QCoreApplication::translate("FrequencyList", "%1 more").arg(hz.size() - most);
    return texts.join(QStringLiteral(", "));
}
