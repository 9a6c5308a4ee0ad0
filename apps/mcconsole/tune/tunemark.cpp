// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/tune/tunemark.h>

#include <apps/pages/severitylook.h>

#include <QtCore/QCoreApplication>

namespace {

struct Row {
    Tuning::EState state;
    const char* word;
    std::optional<ESeverity> severity;  ///< none: nothing to tell
};

// clang-format off
constexpr Row Rows[] = {
    {Tuning::EState::NoMpxOrv,    nullptr,                                        std::nullopt},
    {Tuning::EState::Locked,      QT_TRANSLATE_NOOP("TuneMark", "Locked"),        std::nullopt},
    {Tuning::EState::Empty,       QT_TRANSLATE_NOOP("TuneMark", "No frequency"),  ESeverity::Act},
    {Tuning::EState::NoFrequency, QT_TRANSLATE_NOOP("TuneMark", "No frequency"),  ESeverity::Act},
    {Tuning::EState::OutOfRange,  QT_TRANSLATE_NOOP("TuneMark", "Out of range"),  ESeverity::Act},
    {Tuning::EState::NotSent,     QT_TRANSLATE_NOOP("TuneMark", "Not sent"),      ESeverity::Look},
    {Tuning::EState::Stepping,    QT_TRANSLATE_NOOP("TuneMark", "Not sent yet"),  ESeverity::Look},
    {Tuning::EState::Asked,       QT_TRANSLATE_NOOP("TuneMark", "Asked for"),     ESeverity::Look},
    {Tuning::EState::Refused,     QT_TRANSLATE_NOOP("TuneMark", "Refused"),       ESeverity::Act},
    {Tuning::EState::Ended,       QT_TRANSLATE_NOOP("TuneMark", "Taken away"),    ESeverity::Act},
    {Tuning::EState::Tuned,       QT_TRANSLATE_NOOP("TuneMark", "Tuned"),         ESeverity::Ok},
    {Tuning::EState::NotTuned,    nullptr,                                        std::nullopt},
};
// clang-format on

}  // namespace

TuneMark TuneMark::Of(Tuning::EState state, const QPalette& palette) {
    for (const Row& row : Rows) {
        if (row.state != state) continue;
        const QString word =
            row.word != nullptr ? QCoreApplication::translate("TuneMark", row.word) : QString();
        if (!row.severity) return {word, std::nullopt, palette.color(QPalette::WindowText)};
        return {word, row.severity, severitylook::Colour(*row.severity, palette)};
    }
    Q_UNREACHABLE();
}
