// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/configwatch.h>

#include <apps/mcserver/log/peertext.h>
#include <apps/mcserver/log/serverlog.h>
#include <apps/mcserver/suppression/configfaults.h>

#include <platform/config/cfgcenter.h>

#include <utility>

void ConfigWatch::Start() {
    Stop();
    LookAgainLater();
}

void ConfigWatch::Stop() {
    m_clock.Cancel(std::exchange(m_timer, 0));
}

void ConfigWatch::LookAgainLater() {
    m_timer = m_clock.After(LookInterval, [this] {
        Look();
        LookAgainLater();
    });
}

void ConfigWatch::Look() {
    const QStringList keys = CfgCenter::Instance().LookForEdits();
    for (const CodedText& damage : configfaults::TakeDamages())
        m_log.Write(damage);
    if (keys.isEmpty()) return;
    QStringList named;
    for (const QString& key : keys.mid(0, MaxKeys))
        named << peertext::Shown(key);
    CodedText text = named.join(QStringLiteral(", "));
    if (keys.size() > MaxKeys)
        text = CodedText(ECode::AndMore, {text, CodedText::Number(keys.size() - MaxKeys)});
    m_log.Write({ECode::ConfigEdited, {text}});
}
