// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/mpxorv/mpxorvrequests.h>

#include <platform/device/stddevicedefinition.h>
#include <platform/values/fields.h>

#include <utility>

namespace {

using fields::Content;
using fields::Field;
using fields::ItemsOf;

const values::ValueDescriptor& ReportIntervals() {
    return StdDeviceDefinition::g_vdReportInterval;
}

}  // namespace

struct MpxOrvRequests::Fields {
    using R = MpxOrvRequests;
    struct Below {
        const char* name;
        QString operator()(const R& requests) const { return requests.m_basePath + QLatin1String(name); }
    };
    static QString AnswerCodePath(const R& requests) { return requests.m_basePath + AnswerCodeName(); }
    static QString AnswerPath(const R& requests) { return requests.m_basePath + AnswerName(); }
    static fields::Within<double> Granted(const R& requests) {
        return {requests.m_grantedFrequency, MinFrequency, MaxFrequency};
    }
    // Nobody asserts that they are there.
    // clang-format off
    static constexpr std::tuple Rows = {
        Field{&R::m_pFrequency,      Below{"Frequency"},                    Granted,                     nullptr, 0, {1}},
        Field{&R::m_pBecomeMaster,   Below{"BecomeMaster"},                 Content{false},              nullptr, 0, {2}},
        Field{&R::m_pRestartJob,     Below{"RestartJob"},                   Content{false},              nullptr, 0, {3}},
        Field{&R::m_pBuiltInTest,    Below{"BuiltInTest"},                  Content{false},              nullptr, 0, {4}},
        Field{&R::m_pCalibrate,      Below{"Calibrate"},                    Content{false},              nullptr, 0, {5}},
        Field{&R::m_pReportInterval, Below{"DeviceSetting/ReportInterval"}, ItemsOf{ReportIntervals, 0}, nullptr, 0, {6}},
        Field{&R::m_pAnswer,         AnswerPath,                            Content{QLatin1String()},    nullptr, 0, {7}},
        Field{&R::m_pAnswerCode,     AnswerCodePath,                        Content{QLatin1String()},    nullptr, 0, {8}},
    };
    // clang-format on
};

MpxOrvRequests::MpxOrvRequests(const QString& nodePath, double frequency, Handler handler)
    : m_basePath(nodePath + QLatin1Char('/') + NodeName() + QLatin1Char('/')),
      m_handler(std::move(handler)),
      m_grantedFrequency(frequency) {
    fields::Provide<Fields>(*this, nullptr, true, nullptr);
    m_pFrequency->SetDelivery(values::EDelivery::EveryChange);
    m_pAnswer->SetDelivery(values::EDelivery::EveryChange);
    m_pAnswerCode->SetDelivery(values::EDelivery::EveryChange);
    // Observed only now, so that the contents set above do not count as requests.
    fields::AttachAll<Fields>(*this, this);
}

MpxOrvRequests::~MpxOrvRequests() {
    fields::DetachAll<Fields>(*this, this);
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
    const values::SelectionKey key = interval.count();
    if (m_pReportInterval->GetItem(key) != nullptr)
        m_pReportInterval->Select(key, this);
    else
        m_pReportInterval->SelectIndex(values::ValueSelection::NoIndex, this);
    m_grantedIntervalIndex = m_pReportInterval->GetCurrentIndex();
}

// The code first, so that whoever is told of the text finds the code of it.
void MpxOrvRequests::Answer(const CodedText& text) {
    if (m_pAnswerCode != nullptr) m_pAnswerCode->SetValue(text.ToJsonText(), this);
    if (m_pAnswer != nullptr) m_pAnswer->SetValue(text.ToEnglish(), this);
}

void MpxOrvRequests::Update(Observable* source, TChangeCode code) {
    if (code == changecode::StateChanged)
        fields::ForgetIfGoingAway<Fields>(*this, source, this);
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
