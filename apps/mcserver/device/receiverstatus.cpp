// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/device/receiverstatus.h>

#include <apps/common/iclock.h>
#include <apps/pages/serverkeys.h>

#include <platform/values/valueaccess.h>

namespace {

constexpr double HighestFrequency = 1e12;
constexpr int HighestStrength = 200;

QString ReceiverPath(int number, QLatin1String key) {
    const QString all = mcskeys::Join(mcskeys::DefaultBasePath(mcskeys::Status), serverkeys::Receivers);
    return QStringLiteral("%1/%2/%3").arg(all, QString::number(number + 1), key);
}

values::Value<QString>* ReceiverText(int number, QLatin1String key) {
    return values::ProvideValue<values::Value<QString>>(ReceiverPath(number, key), QString(), true, nullptr);
}

QString ReceiverStateText(ReceiverFacts::EState state) {
    switch (state) {
        case ReceiverFacts::EState::Connected:
            return QStringLiteral("Connected");
        case ReceiverFacts::EState::Error:
            return QStringLiteral("Error");
        case ReceiverFacts::EState::Disconnected:
            break;
    }
    return QStringLiteral("Disconnected");
}

}  // namespace

ReceiverStatus::Receiver ReceiverStatus::Make(int number) {
    using namespace serverkeys;
    Receiver made;
    made.name = ReceiverText(number, ReceiverName);
    made.address = ReceiverText(number, ReceiverAddress);
    made.stateSince = ReceiverText(number, ReceiverStateSince);
    made.state = ReceiverText(number, ReceiverState);
    made.reasonCode = ReceiverText(number, ReceiverReasonCode);
    made.reason = ReceiverText(number, ReceiverReason);
    made.frequency = values::ProvideValue<values::ValueNumeric<double>>(
        ReceiverPath(number, ReceiverFrequency), 0.0, 0.0, HighestFrequency, true, nullptr);
    made.mode = ReceiverText(number, ReceiverMode);
    made.strength = values::ProvideValue<values::ValueNumeric<int>>(
        ReceiverPath(number, ReceiverStrength), ReceiverFacts::NoStrength, ReceiverFacts::NoStrength,
        HighestStrength, true, nullptr);
    return made;
}

void ReceiverStatus::Show(int number, const ReceiverFacts& facts) {
    while (static_cast<int>(m_receivers.size()) <= number)
        m_receivers.push_back(Make(static_cast<int>(m_receivers.size())));
    Receiver& shown = m_receivers[static_cast<std::size_t>(number)];
    const QString before = shown.state->GetValue();
    if (before.isEmpty() || facts.state != shown.facts.state || facts.reason != shown.facts.reason) {
        shown.name->SetValue(facts.name);
        shown.address->SetValue(facts.address);
        // What belongs to it first: whoever is told of the state looks at it.
        shown.reasonCode->SetValue(facts.reason.ToJsonText());
        shown.reason->SetValue(facts.reason.ToEnglish());
        const QString state = ReceiverStateText(facts.state);
        if (state != before) shown.stateSince->SetValue(m_clock.UtcText());
        shown.state->SetValue(state);
    }
    shown.facts = facts;
    shown.mode->SetValue(facts.mode);
    shown.frequency->SetValue(facts.hz);
    shown.strength->SetValue(facts.strength);
}
