// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/mpxorv/mpxorvfacts.h>

#include <apps/common/codedtext.h>
#include <apps/common/iclock.h>
#include <apps/mcserver/mpxorv/mpxorvrequests.h>
#include <apps/pages/serverkeys.h>

#include <platform/values/fields.h>

namespace {

using fields::Content;
using fields::Field;
using fields::Within;

void SetText(values::Value<QString>* value, const QString& text) {
    if (value != nullptr) value->SetValue(text);
}

}  // namespace

struct MpxOrvFacts::Fields {
    using F = MpxOrvFacts;
    struct Below {
        QLatin1String key;
        QString operator()(const F& facts) const { return mcskeys::Join(facts.m_statusPath, key); }
    };
    static constexpr Content<QLatin1String> Empty{QLatin1String()};
    static constexpr Within<double> Untuned{0.0, 0.0, MpxOrvRequests::MaxFrequency};
    // Nobody asserts that they are there.
    // clang-format off
    static constexpr std::tuple Rows = {
        Field{&F::m_pTunedFrequency,        Below{serverkeys::TunedFrequency},        Untuned, nullptr, 0, {1}},
        Field{&F::m_pTunedSince,            Below{serverkeys::TunedSince},            Empty,   nullptr, 0, {2}},
        Field{&F::m_pBlankingSwitchedBy,    Below{serverkeys::BlankingSwitchedBy},    Empty,   nullptr, 0, {3}},
        Field{&F::m_pBlankingSwitchedSince, Below{serverkeys::BlankingSwitchedSince}, Empty,   nullptr, 0, {4}},
        Field{&F::m_pPoliciesLocked,        Below{serverkeys::PoliciesLocked},        Empty,   nullptr, 0, {5}},
        Field{&F::m_pOperationTypeCode,     Below{serverkeys::OperationTypeCode},     Empty,   nullptr, 0, {6}},
    };
    // clang-format on
};

MpxOrvFacts::MpxOrvFacts(const QString& statusPath) : m_statusPath(statusPath) {
    fields::Provide<Fields>(*this, nullptr, true, this);
}

MpxOrvFacts::~MpxOrvFacts() {
    fields::DetachAll<Fields>(*this, this);
}

void MpxOrvFacts::ShowTuned(double hz, const IClock& clock) {
    if (m_pTunedFrequency == nullptr || m_pTunedFrequency->GetValue() == hz) return;
    // The moment first: whoever is told of the frequency looks at it.
    SetText(m_pTunedSince, hz != 0.0 ? clock.UtcText() : QString());
    if (m_pTunedFrequency != nullptr) m_pTunedFrequency->SetValue(hz);
}

void MpxOrvFacts::ShowBlankingSwitched(const QString& by, const IClock& clock) {
    SetText(m_pBlankingSwitchedBy, by);
    SetText(m_pBlankingSwitchedSince, clock.UtcText());
}

void MpxOrvFacts::RestoreBlankingSwitched(const QString& by, const QString& since) {
    SetText(m_pBlankingSwitchedBy, by);
    SetText(m_pBlankingSwitchedSince, since);
}

QString MpxOrvFacts::GetBlankingSwitchedBy() const {
    return m_pBlankingSwitchedBy != nullptr ? m_pBlankingSwitchedBy->GetValue() : QString();
}

QString MpxOrvFacts::GetBlankingSwitchedSince() const {
    return m_pBlankingSwitchedSince != nullptr ? m_pBlankingSwitchedSince->GetValue() : QString();
}

void MpxOrvFacts::ShowOperationType(const CodedText& does) {
    SetText(m_pOperationTypeCode, does.ToJsonText());
}

void MpxOrvFacts::ShowPoliciesLocked(const CodedText& reason) {
    SetText(m_pPoliciesLocked, reason.IsEmpty() ? QString() : reason.ToJsonText());
}

void MpxOrvFacts::Update(Observable* source, TChangeCode code) {
    if (code == changecode::StateChanged) fields::ForgetIfGoingAway<Fields>(*this, source, this);
}
