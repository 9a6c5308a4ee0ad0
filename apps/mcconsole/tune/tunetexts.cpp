// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/tune/tunetexts.h>

#include <apps/mcconsole/tune/tunebar.h>

#include <platform/widgets/valuetext.h>

namespace {

constexpr int MaxEntryLength = 30;  // characters of it in a message
constexpr int MaxToldReason = 200;  // of what the server says

QString RangeText(const Tuning& tuning) {
    return TuneBar::tr("%1 to %2 MHz")
        .arg(FrequencyText::InMegahertz(tuning.GetLowest(), 0),
             FrequencyText::InMegahertz(tuning.GetHighest(), 0));
}

/// Some hundred digits would push the field away.
QString ShownFrequency(double hz) {
    return valuetext::Shortened(Tuning::Shown(hz), MaxEntryLength);
}

/// What was asked for before may still be granted, beside whatever is entered since.
QString WithUnanswered(const Tuning& tuning, const QString& message) {
    const std::optional<double> hz = tuning.GetUnanswered();
    if (!hz) return message;
    return TuneBar::tr("%1 is asked for and not answered yet.").arg(ShownFrequency(*hz)) + QLatin1Char(' ') +
           message;
}

}  // namespace

QString tunetexts::Understood(const Tuning& tuning) {
    const FrequencyText wanted = tuning.GetWanted();
    return wanted.IsFrequency() ? QStringLiteral("= %1").arg(ShownFrequency(wanted.GetHz())) : QString();
}

QString tunetexts::Actual(const Tuning& tuning) {
    if (tuning.GetState() == Tuning::EState::NoMpxOrv) return QStringLiteral("- - -");
    const std::optional<double> hz = tuning.GetActual();
    return hz ? Tuning::Shown(*hz) : TuneBar::tr("NOT TUNED");
}

QString tunetexts::Message(const Tuning& tuning) {
    const QString entry = valuetext::Shortened(tuning.GetText(), MaxEntryLength);
    const FrequencyText wanted = tuning.GetWanted();
    switch (tuning.GetState()) {
        case Tuning::EState::Locked:
            return TuneBar::tr("This user may not tune here.");
        case Tuning::EState::Empty:
            return TuneBar::tr("Enter a frequency, such as 121.5, 118400 kHz or 121500000.");
        case Tuning::EState::NoFrequency:
            return TuneBar::tr("\"%1\" is no frequency. Enter one such as 121.5, 118400 kHz or 121500000.")
                .arg(entry);
        case Tuning::EState::OutOfRange:
            return TuneBar::tr("%1 lies outside the range of the device, %2: nothing is asked for.")
                .arg(wanted.IsFrequency() ? ShownFrequency(wanted.GetHz()) : entry, RangeText(tuning));
        case Tuning::EState::NotSent:
            return WithUnanswered(tuning,
                                  TuneBar::tr("Enter or \"Tune\" asks for it, Escape takes it back."));
        case Tuning::EState::Stepping:
            return WithUnanswered(tuning, TuneBar::tr("It is asked for once the steps rest."));
        case Tuning::EState::Asked:
            return TuneBar::tr("The server has not answered yet.");
        case Tuning::EState::Refused:
            return TuneBar::tr("%1. \"Tune\" asks once more.")
                .arg(valuetext::Shortened(tuning.GetReason(), MaxToldReason));
        case Tuning::EState::Ended:
            return valuetext::Shortened(tuning.GetReason(), MaxToldReason);
        case Tuning::EState::NoMpxOrv:
        case Tuning::EState::Tuned:
        case Tuning::EState::NotTuned:
            break;
    }
    return QString();
}
