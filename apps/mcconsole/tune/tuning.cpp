// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/tune/tuning.h>

#include <apps/common/problemtext.h>
#include <apps/mcconsole/tune/frequencystep.h>
#include <apps/mcconsole/tune/serveranswer.h>

#include <platform/device/stddevicedefinition.h>
#include <platform/values/value.h>
#include <platform/values/valueselection.h>
#include <platform/values/visit.h>

#include <QtCore/QPointer>

#include <cmath>
#include <limits>

namespace {

template <class V>
PathBinding::Filter Only() {
    return [](const values::ValueBase& value) { return values::Is<V>(value); };
}

}  // namespace

Tuning::Tuning(IClock& clock, QObject* parent)
    : QObject(parent),
      m_frequency(*this, Only<Frequency>()),
      m_code(*this, Only<values::Value<QString>>()),
      m_answer(*this, Only<values::Value<QString>>()),
      m_mode(*this, Only<values::ValueSelection>()),
      m_rest(clock),
      m_step(FrequencyStep::UsualIndex()) {
    values::Refusals::Instance().AddListener(this);
}

Tuning::~Tuning() {
    values::Refusals::Instance().RemoveListener(this);
}

void Tuning::Bind(const QString& path) {
    m_rest.Stop();
    // What was asked of the lost MpxORV is what the operator wants of the next one.
    if (m_wasAskedFor) m_isEntered = true;
    m_unanswered = 0;
    Conclude(EState::NotSent, QString());
    const auto below = [&](const char* names) {
        return path.isEmpty() ? QString() : path + QLatin1String(names);
    };
    m_hasWish = false;
    m_began.reset();
    m_mode.SetPath(below("/Status/OperationMode"));
    m_code.SetPath(below("/Request/AnswerCode"));
    m_answer.SetPath(below("/Request/Answer"));
    m_frequency.SetPath(below("/Request/Frequency"));
}

void Tuning::Enter(const QString& text) {
    m_rest.Stop();
    m_text = text;
    m_isEntered = true;
    Q_EMIT Changed();
}

void Tuning::ChooseStep(int index) {
    const bool isOne = index >= 0 && index < static_cast<int>(FrequencyStep::All().size());
    if (!isOne || index == m_step) return;
    m_step = index;
    Q_EMIT StepChosen();
    Q_EMIT Changed();
}

void Tuning::Step(int count) {
    const FrequencyText wanted = GetWanted();
    if (GetValue() == nullptr || !GetValue()->IsWritable() || !wanted.IsFrequency()) return;
    const double hz = FrequencyStep::All()[static_cast<std::size_t>(m_step)].From(wanted.GetHz(), count);
    if (!IsInRange(hz)) return;
    const EState before = GetState();
    // What was typed waits for Enter, whatever key or wheel comes near it meanwhile.
    const bool isTyped = before == EState::NotSent || before == EState::OutOfRange;
    Enter(Shown(hz));
    if (!isTyped) m_rest.Start(Rest, [this] { Tune(); });
    Q_EMIT Changed();
}

bool Tuning::Tune() {
    m_rest.Stop();
    const EState state = StateOfEntry();
    const QPointer<Tuning> self(this);
    if (state == EState::NotSent) {
        m_actualBefore = GetActual();
        m_asked = GetWanted().GetHz();
        m_text = Shown(m_asked);
        m_isEntered = m_wasAskedFor = true;
        ++m_unanswered;
        Conclude(EState::Asked, QString());
        GetValue()->SetValue(m_asked);  // whoever is told may destroy this
    }
    if (self != nullptr) Q_EMIT Changed();
    return state == EState::NotSent;
}

void Tuning::Restore() {
    m_rest.Stop();
    m_isEntered = m_wasAskedFor = false;
    m_text.clear();
    if (m_outcome == EState::Asked)
        m_text = Shown(m_asked);
    else if (m_outcome != EState::Ended)  // that stays true, whatever is taken back
        Conclude(EState::NotSent, QString());
    Follow();
    Q_EMIT Changed();
}

Tuning::EState Tuning::GetState() const {
    const EState entry = StateOfEntry();
    if (entry != EState::NotSent) return entry;
    if (m_rest.IsRunning()) return EState::Stepping;
    return StateOfRequest(GetWanted().GetHz());
}

/// Why what is entered cannot be asked for; NotSent if it can.
Tuning::EState Tuning::StateOfEntry() const {
    const Frequency* const value = GetValue();
    if (value == nullptr) return EState::NoMpxOrv;
    if (!value->IsWritable()) return EState::Locked;
    const FrequencyText wanted = GetWanted();
    switch (wanted.GetProblem()) {
        case FrequencyText::EProblem::Empty:
            return m_isEntered ? EState::Empty : EState::NotTuned;
        case FrequencyText::EProblem::NoFrequency:
            return EState::NoFrequency;
        case FrequencyText::EProblem::Negative:
        case FrequencyText::EProblem::TooGreat:
            return HasRange() ? EState::OutOfRange : EState::NoFrequency;
        case FrequencyText::EProblem::None:
            break;
    }
    return IsInRange(wanted.GetHz()) || !HasRange() ? EState::NotSent : EState::OutOfRange;
}

Tuning::EState Tuning::StateOfRequest(double wanted) const {
    const bool isOfWanted = m_outcome != EState::NotSent && m_asked == wanted;
    if (isOfWanted && m_outcome != EState::Ended) return m_outcome;
    if (GetActual() == wanted) return EState::Tuned;
    if (isOfWanted) return m_outcome;
    return m_isEntered ? EState::NotSent : EState::NotTuned;
}

FrequencyText Tuning::GetWanted() const {
    return FrequencyText(m_text, FrequencyText::EPlainNumber::MegahertzOrHertz);
}

std::optional<double> Tuning::GetActual() const {
    // While there is no answer, the value holds what was asked for.
    if (m_outcome == EState::Asked) return m_actualBefore;
    const auto* const mode = static_cast<const values::ValueSelection*>(m_mode.GetValue());
    const bool isTuned = GetValue() != nullptr && mode != nullptr && mode->GetCurrentKey() == OperationFfm;
    return isTuned ? std::make_optional(GetValue()->GetValue()) : std::nullopt;
}

/// The frequency that the MpxORV begins with is nobody's wish, whatever else was asked for, and is not to be
/// tuned to by whoever hits a key: somebody has asked for one that is tuned, or was entered here, or came
/// since this is bound.
void Tuning::LookForWish() {
    if (GetValue() == nullptr) return;
    if (!m_began) m_began = GetValue()->GetValue();
    if (GetActual() || m_unanswered != 0 || GetValue()->GetValue() != *m_began) m_hasWish = true;
}

double Tuning::GetLowest() const {
    return GetValue() != nullptr ? GetValue()->GetMin() : std::numeric_limits<double>::lowest();
}

double Tuning::GetHighest() const {
    return GetValue() != nullptr ? GetValue()->GetMax() : (std::numeric_limits<double>::max)();
}

/// Whether the server says what the device can be tuned to.
bool Tuning::HasRange() const {
    return GetLowest() > std::numeric_limits<double>::lowest() &&
           GetHighest() < (std::numeric_limits<double>::max)();
}

bool Tuning::IsInRange(double hz) const {
    return hz >= GetLowest() && hz <= GetHighest();
}

QString Tuning::Shown(double hz) {
    return QStringLiteral("%1 MHz").arg(FrequencyText::InMegahertz(hz));
}

std::optional<double> Tuning::GetUnanswered() const {
    return m_outcome == EState::Asked ? std::make_optional(m_asked) : std::nullopt;
}

/// What there is, live; null if nothing is.
Tuning::Frequency* Tuning::GetValue() const {
    return m_frequency.GetState() == EBindingState::Live ? static_cast<Frequency*>(m_frequency.GetValue())
                                                         : nullptr;
}

void Tuning::OnBindingChanged(PathBinding& binding, TChangeCode code) {
    std::optional<double> granted;
    if (&binding == &m_answer && code == changecode::ContentChanged) granted = OnAnswer(GetAnswer());
    Follow();
    const QPointer<Tuning> self(this);
    if (granted) Q_EMIT Granted(*granted);
    if (self != nullptr) Q_EMIT Changed();
}

ServerAnswer Tuning::GetAnswer() const {
    const auto textOf = [](const PathBinding& binding) {
        const auto* const value = static_cast<const values::Value<QString>*>(binding.GetValue());
        return value != nullptr ? value->GetValue() : QString();
    };
    return ServerAnswer(textOf(m_answer), textOf(m_code));
}

/// The frequency, in Hz, that is granted by \a answer; none if that is not about one that was asked for here.
std::optional<double> Tuning::OnAnswer(const ServerAnswer& answer) {
    const bool isAsked = m_outcome == EState::Asked;
    if (answer.GetKind() == ServerAnswer::EKind::Ended) {
        if (isAsked || GetValue() == nullptr) return std::nullopt;
        m_asked = GetValue()->GetValue();  // what the operator has typed since is still not sent
        Conclude(EState::Ended, answer.GetReason());
        return std::nullopt;
    }
    if (answer.GetKind() != ServerAnswer::EKind::Refused) return OnDone(answer);
    // Each request has its answer, in their order; that of the last one counts.
    if (isAsked && --m_unanswered <= 0) Conclude(EState::Refused, answer.GetReason());
    return std::nullopt;
}

std::optional<double> Tuning::OnDone(const ServerAnswer& answer) {
    const std::optional<CodedText>& said = answer.GetSaid();
    const bool isOfTuning =
        said && (said->GetCode() == ECode::TunedTo || said->GetCode() == ECode::ReadFromMaster);
    if (said && !isOfTuning) return std::nullopt;  // another thing was asked for as well
    // What was refused just now may have been that other thing.
    const bool isGrantedAfterAll = isOfTuning && m_outcome == EState::Refused && GetValue() != nullptr &&
                                   GetValue()->GetValue() == m_asked;
    const bool isOfLast = m_outcome == EState::Asked && --m_unanswered <= 0;
    if (!isOfLast && !isGrantedAfterAll) return std::nullopt;
    m_isEntered = m_isEntered && GetWanted().GetHz() != m_asked;
    Conclude(EState::NotSent, QString());
    return m_asked;
}

/// The server does not let this user ask, so nobody answers.
void Tuning::OnRefused(values::TreeItem* item, const QString&, const QString& reason) {
    if (item == nullptr || item != m_frequency.GetValue() || m_outcome != EState::Asked) return;
    m_unanswered = 0;
    Conclude(EState::Refused, problemtext::Translated(reason));
    Q_EMIT Changed();
}

void Tuning::Conclude(EState outcome, const QString& reason) {
    m_outcome = outcome;
    m_reason = reason;
}

/// Where the operator has entered nothing, the field shows what there is.
void Tuning::Follow() {
    LookForWish();
    if (m_isEntered || m_outcome == EState::Asked) return;
    const QString before = m_text;
    if (GetValue() != nullptr)
        m_text = m_hasWish ? Shown(GetValue()->GetValue()) : QString();
    else if (m_frequency.GetPath().isEmpty())
        m_text.clear();
    if (m_text != before) m_wasAskedFor = false;  // but by somebody else
}
