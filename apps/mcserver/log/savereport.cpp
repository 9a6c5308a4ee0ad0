// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/log/savereport.h>

#include <apps/mcserver/log/serverlog.h>

#include <devicecontrol/multichannelserver/common/mcsconfigdata.h>
#include <devicecontrol/multichannelserver/common/mcskeys.h>

#include <platform/config/cfgsave.h>
#include <platform/config/icfg.h>
#include <platform/values/valueaccess.h>

#include <limits>

namespace {

/// What the store keeps of a frequency that is too large for it.
constexpr int TooLargeAsKept = std::numeric_limits<int>::min();
constexpr double FirstTooLarge = 2147483648.0;

/// Whom the log takes for the cause of what any client may set again and again.
QString Setter() {
    return QStringLiteral("Config");
}

QString NumberText(double number) {
    constexpr int Digits = 15;
    return QString::number(number, 'g', Digits);
}

}  // namespace

SaveReport::SaveReport(const MCSConfigData& config, ServerLog& log)
    : m_config(config), m_log(log), m_pAnswer(*this), m_pFrequency(*this), m_pScanAveragingTime(*this) {
    m_pAnswer.Begin(values::ProvideValue<values::Value<QString>>(
        mcskeys::Join(m_config.GetBasePath(), AnswerName()), QString(), true, nullptr));
    if (m_pAnswer) m_pAnswer->SetDelivery(values::EDelivery::EveryChange);
}

void SaveReport::Begin(ICfg& cfg) {
    m_cfg = &cfg;
    TellWhatIsNotUsed(mcskeys::NumberOfFreqChannels, m_config.GetNumberOfFreqChannels());
    TellWhatIsNotUsed(mcskeys::DefaultFrequencyForChannel, m_config.GetDefaultFrequencyForChannels());
    TellWhatIsNotUsed(mcskeys::DefaultScanAveragingTimeIndex,
                      static_cast<double>(m_config.GetDefaultScanAveragingTime()));
    // After MCSConfigData, which has saved these two when they are told here.
    m_pFrequency.Begin(values::FindValue<values::ValueNumeric<double>>(
        m_config.GetDefaultFrequencyForChannels_ValuePath(), nullptr, nullptr));
    m_pScanAveragingTime.Begin(values::FindValue<values::ValueSelection>(
        m_config.GetDefaultScanAveragingTime_ValuePath(), nullptr, nullptr));
}

void SaveReport::TellWhatIsNotUsed(const QString& key, double used) {
    const int kept = m_cfg->ReadInt(key, static_cast<int>(used));
    if (kept == used) return;
    const bool isTooLarge = key == mcskeys::DefaultFrequencyForChannel && kept == TooLargeAsKept;
    const CodedText what = isTooLarge ? CodedText(ECode::TooLargeForFile) : CodedText();
    m_log.Write({ECode::ConfigFileValue, {CodedText::Number(kept), key, what, NumberText(used)}});
}

void SaveReport::Answer(const QString& problem) {
    if (!m_pAnswer) return;
    const QString exception = WhatIsNotKept().ToEnglish();
    if (!problem.isEmpty())
        m_pAnswer->SetValue(QStringLiteral("failed: ") + problem);
    else if (!exception.isEmpty())
        m_pAnswer->SetValue(QStringLiteral("done: the configuration is saved, but ") + exception);
    else
        m_pAnswer->SetValue(QStringLiteral("done: the configuration is saved"));
}

void SaveReport::LogFailure(const QString& problem) {
    if (!problem.isEmpty()) m_log.WriteFrom(Setter(), {ECode::ConfigNotSaved, {problem}});
}

CodedText SaveReport::WhatIsNotKept() const {
    const double set = m_pFrequency ? m_pFrequency->GetValue() : 0.0;
    const int kept = set < FirstTooLarge ? static_cast<int>(set) : TooLargeAsKept;
    if (kept == set) return {};
    return {ECode::FrequencyNotKept,
            {mcskeys::DefaultFrequencyForChannel, NumberText(set), CodedText::Number(kept)}};
}

void SaveReport::Update(Observable* source, TChangeCode code) {
    if (m_pAnswer.EndIfGoingAway(source, code) || m_pFrequency.EndIfGoingAway(source, code) ||
        m_pScanAveragingTime.EndIfGoingAway(source, code) || code != changecode::ContentChanged)
        return;
    if (!m_pFrequency.Is(source) && !m_pScanAveragingTime.Is(source)) return;
    CfgSave save;
    m_cfg->CommitKey(mcskeys::DefaultFrequencyForChannel);  // once more what has just failed, if it has
    save.End();
    LogFailure(save.GetProblem());
    const CodedText exception = WhatIsNotKept();
    if (m_pFrequency.Is(source) && !exception.IsEmpty()) m_log.WriteFrom(Setter(), exception);
}
