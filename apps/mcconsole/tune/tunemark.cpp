// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/tune/tunemark.h>

#include <QtCore/QCoreApplication>

namespace {

enum class EUrgency { None, Good, Look, Act };

struct Row {
    Tuning::EState state;
    const char* word;
    EUrgency urgency;
};

// clang-format off
constexpr Row Rows[] = {
    {Tuning::EState::NoMpxOrv,    nullptr,                                        EUrgency::None},
    {Tuning::EState::Locked,      QT_TRANSLATE_NOOP("TuneMark", "Locked"),        EUrgency::None},
    {Tuning::EState::Empty,       QT_TRANSLATE_NOOP("TuneMark", "No frequency"),  EUrgency::Act},
    {Tuning::EState::NoFrequency, QT_TRANSLATE_NOOP("TuneMark", "No frequency"),  EUrgency::Act},
    {Tuning::EState::OutOfRange,  QT_TRANSLATE_NOOP("TuneMark", "Out of range"),  EUrgency::Act},
    {Tuning::EState::NotSent,     QT_TRANSLATE_NOOP("TuneMark", "Not sent"),      EUrgency::Look},
    {Tuning::EState::Stepping,    QT_TRANSLATE_NOOP("TuneMark", "Not sent yet"),  EUrgency::Look},
    {Tuning::EState::Asked,       QT_TRANSLATE_NOOP("TuneMark", "Asked for"),     EUrgency::Look},
    {Tuning::EState::Refused,     QT_TRANSLATE_NOOP("TuneMark", "Refused"),       EUrgency::Act},
    {Tuning::EState::Ended,       QT_TRANSLATE_NOOP("TuneMark", "Taken away"),    EUrgency::Act},
    {Tuning::EState::Tuned,       QT_TRANSLATE_NOOP("TuneMark", "Tuned"),         EUrgency::Good},
    {Tuning::EState::NotTuned,    nullptr,                                        EUrgency::None},
};
// clang-format on

QColor ColourOf(EUrgency urgency, const QPalette& palette) {
    constexpr int Middle = 128;
    const bool isDark = palette.color(QPalette::Window).lightness() < Middle;
    switch (urgency) {
        case EUrgency::Good:
            return isDark ? QColor(0x81, 0xc7, 0x84) : QColor(0x1b, 0x5e, 0x20);
        case EUrgency::Look:
            return isDark ? QColor(0xff, 0xd5, 0x4f) : QColor(0x8a, 0x4b, 0x00);
        case EUrgency::Act:
            return isDark ? QColor(0xff, 0x8a, 0x80) : QColor(0xb7, 0x1c, 0x1c);
        case EUrgency::None:
            break;
    }
    return palette.color(QPalette::WindowText);
}

std::optional<QStyle::StandardPixmap> IconOf(EUrgency urgency) {
    switch (urgency) {
        case EUrgency::Good:
            return QStyle::SP_DialogApplyButton;
        case EUrgency::Look:
            return QStyle::SP_MessageBoxWarning;
        case EUrgency::Act:
            return QStyle::SP_MessageBoxCritical;
        case EUrgency::None:
            break;
    }
    return std::nullopt;
}

}  // namespace

TuneMark TuneMark::Of(Tuning::EState state, const QPalette& palette) {
    for (const Row& row : Rows) {
        if (row.state != state) continue;
        const QString word =
            row.word != nullptr ? QCoreApplication::translate("TuneMark", row.word) : QString();
        return {word, IconOf(row.urgency), ColourOf(row.urgency, palette)};
    }
    Q_UNREACHABLE();
}
