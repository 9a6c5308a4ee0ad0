// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/mpxorv/mpxorvrequests.h>

#include <devicecontrol/multichannelserver/common/observedvalues.h>

#include <platform/device/stddevicedefinition.h>
#include <platform/values/valueaccess.h>

#include <utility>

MpxOrvRequests::MpxOrvRequests(const QString& nodePath, double frequency, Handler handler)
    : m_handler(std::move(handler)), m_grantedFrequency(frequency) {
    using namespace values;  // NOLINT(google-build-using-namespace): one table of types
    const ValueDescriptor& intervals = StdDeviceDefinition::g_vdReportInterval;
    const QString base = nodePath + QLatin1Char('/') + NodeName() + QLatin1Char('/');
    const auto provideButton = [&](const char* name) {
        return ProvideValue<Value<bool>>(base + QLatin1String(name), false, true, nullptr);
    };
    m_pFrequency = ProvideValue<ValueNumeric<double>>(base + QStringLiteral("Frequency"), frequency,
                                                      MinFrequency, MaxFrequency, true, nullptr);
    m_pFrequency->SetDelivery(EDelivery::EveryChange);
    m_pBecomeMaster = provideButton("BecomeMaster");
    m_pRestartJob = provideButton("RestartJob");
    m_pBuiltInTest = provideButton("BuiltInTest");
    m_pCalibrate = provideButton("Calibrate");
    m_pReportInterval =
        ProvideValue<ValueSelection>(base + QStringLiteral("DeviceSetting/ReportInterval"), 0,
                                     intervals.SelItems(), intervals.CountSelItems(), true, nullptr);
    m_pAnswer = ProvideValue<Value<QString>>(base + AnswerName(), QString(), true, nullptr);
    m_pAnswer->SetDelivery(EDelivery::EveryChange);
    // Only now, so that nothing of this counts as a request.
    std::apply([this](auto*&... value) { (value->AddObserver(this), ...); }, ObservedValues());
}

MpxOrvRequests::~MpxOrvRequests() {
    observedvalues::DetachAll(ObservedValues(), this);
}

double MpxOrvRequests::GetFrequency() const {
    return m_pFrequency != nullptr ? m_pFrequency->GetValue() : m_grantedFrequency;
}

std::chrono::milliseconds MpxOrvRequests::GetReportInterval() const {
    return std::chrono::milliseconds(m_pReportInterval != nullptr ? m_pReportInterval->GetCurrentKey() : 0);
}

void MpxOrvRequests::Grant(ERequest request) {
    if (request == ERequest::Frequency) m_grantedFrequency = GetFrequency();
    if (request == ERequest::ReportInterval && m_pReportInterval != nullptr)
        m_grantedIntervalIndex = m_pReportInterval->GetCurrentIndex();
}

void MpxOrvRequests::TakeBack(ERequest request) {
    if (request == ERequest::Frequency && m_pFrequency != nullptr)
        m_pFrequency->SetValue(m_grantedFrequency, this);
    if (request == ERequest::ReportInterval && m_pReportInterval != nullptr)
        m_pReportInterval->SelectIndex(m_grantedIntervalIndex, this);
}

void MpxOrvRequests::ShowReportInterval(std::chrono::milliseconds interval) {
    if (m_pReportInterval == nullptr) return;
    const auto key = static_cast<long>(interval.count());
    if (m_pReportInterval->GetItem(key) != nullptr)
        m_pReportInterval->Select(key, this);
    else
        m_pReportInterval->SelectIndex(values::ValueSelection::NoIndex, this);
    m_grantedIntervalIndex = m_pReportInterval->GetCurrentIndex();
}

void MpxOrvRequests::Answer(const QString& text) {
    if (m_pAnswer != nullptr) m_pAnswer->SetValue(text, this);
}

void MpxOrvRequests::Update(Observable* source, TChangeCode code) {
    if (code == changecode::StateChanged)
        observedvalues::ForgetIfGoingAway(ObservedValues(), source, this);
    else if (code == changecode::ContentChanged)
        OnContentChanged(source);
}

void MpxOrvRequests::OnContentChanged(const Observable* source) {
    struct Button {
        values::Value<bool>** value;
        ERequest request;
    };
    const Button buttons[] = {{&m_pBecomeMaster, ERequest::BecomeMaster},
                              {&m_pRestartJob, ERequest::RestartJob},
                              {&m_pBuiltInTest, ERequest::BuiltInTest},
                              {&m_pCalibrate, ERequest::Calibrate}};
    for (const Button& button : buttons) {
        if (*button.value == nullptr || source != *button.value) continue;
        if (!(*button.value)->GetValue()) return;
        m_handler(button.request);
        if (*button.value != nullptr) (*button.value)->SetValue(false, this);
        return;
    }
    if (m_pFrequency != nullptr && source == m_pFrequency) m_handler(ERequest::Frequency);
    if (m_pReportInterval != nullptr && source == m_pReportInterval) m_handler(ERequest::ReportInterval);
}
