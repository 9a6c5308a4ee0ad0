// SPDX-License-Identifier: Apache-2.0
#include <apps/common/codedtext.h>
#include <apps/mcconsole/session/judgement.h>
#include <apps/mcconsole/session/judgementparts.h>

#include <platform/device/stddevicedefinition.h>

namespace {

using namespace judgementparts;

using EDeviceFact = ServerFacts::EFact;

struct StateWord {
    int key;
    const char* text;
};

// clang-format off
constexpr StateWord BootWords[] = {
    {BootUnknown,     QT_TRANSLATE_NOOP("Judgement", "unknown")},
    {BootPowerOn,     QT_TRANSLATE_NOOP("Judgement", "power on")},
    {BootLoading,     QT_TRANSLATE_NOOP("Judgement", "loading")},
    {BootSelfTest,    QT_TRANSLATE_NOOP("Judgement", "self test")},
    {BootCalibrating, QT_TRANSLATE_NOOP("Judgement", "calibrating")},
    {BootReady,       QT_TRANSLATE_NOOP("Judgement", "ready")},
    {BootFailed,      QT_TRANSLATE_NOOP("Judgement", "failed")},
};
constexpr StateWord ModeWords[] = {
    {OperationIdle,        QT_TRANSLATE_NOOP("Judgement", "idle")},
    {OperationFfm,         QT_TRANSLATE_NOOP("Judgement", "fixed frequency")},
    {OperationAudio,       QT_TRANSLATE_NOOP("Judgement", "audio")},
    {OperationSearch,      QT_TRANSLATE_NOOP("Judgement", "search")},
    {OperationScan,        QT_TRANSLATE_NOOP("Judgement", "scan")},
    {OperationCalibration, QT_TRANSLATE_NOOP("Judgement", "calibration")},
    {OperationBuiltInTest, QT_TRANSLATE_NOOP("Judgement", "built-in test")},
    {OperationMemoryScan,  QT_TRANSLATE_NOOP("Judgement", "memory scan")},
};
// clang-format on

template <std::size_t size>
QString WordFor(const StateWord (&words)[size], int key) {
    for (const StateWord& word : words)
        if (word.key == key) return JudgementText(word.text);
    return QString::number(key);
}

/// Of a device that is made of receivers, and ready while one of them answers: some may be lost.
void TellOfLostReceivers(const std::optional<CodedText>& state, SituationItem& item) {
    const bool isOfReceivers = state && state->GetCode() == ECode::ReceiversAnswer;
    if (item.severity != ESeverity::Ok || !isOfReceivers || state->GetArguments().size() < 2) return;
    const QString answering = state->GetArguments()[0].ToEnglish();
    const QString all = state->GetArguments()[1].ToEnglish();
    if (answering == all) return;
    item.severity = ESeverity::Look;
    item.word = JudgementText(QT_TRANSLATE_NOOP("Judgement", "%1 of %2 receivers")).arg(answering, all);
    item.brief = JudgementText(QT_TRANSLATE_NOOP("Judgement", "%1/%2 ready")).arg(answering, all);
}

}  // namespace

SituationItem judgement::Device(const ServerFacts& facts) {
    const std::optional<int> boot = facts.Key(EDeviceFact::BootState);
    if (!boot) return UnknownItem(StatusPageName);
    const QString bootWord = WordFor(BootWords, *boot);
    const QString code = facts.Text(EDeviceFact::ConnectionStateCode).value_or(QString());
    const QString connection = ShortReason(
        CodedText::TranslatedBeside(facts.Text(EDeviceFact::ConnectionState).value_or(QString()), code));
    SituationItem item;
    if (facts.Flag(EDeviceFact::IsOnline) == false && facts.Flag(EDeviceFact::ShallBeConnected) == false)
        item = MakeItem(ESeverity::Look, JudgementText(QT_TRANSLATE_NOOP("Judgement", "switched off")),
                        CommandsPageName);
    else if (facts.Flag(EDeviceFact::IsOnline) == false)
        item = MakeItem(ESeverity::Act, JudgementText(QT_TRANSLATE_NOOP("Judgement", "no connection")),
                        StatusPageName);
    else if (*boot == BootFailed)
        item = MakeItem(ESeverity::Act, bootWord, StatusPageName);
    else if (*boot != BootReady)
        item = MakeItem(ESeverity::Look, bootWord, StatusPageName);
    else
        item = MakeItem(ESeverity::Ok, bootWord, StatusPageName);
    const std::optional<int> mode = facts.Key(EDeviceFact::OperationMode);
    const QString modeWord = mode ? WordFor(ModeWords, *mode) : QString();
    item.brief = item.word;
    TellOfLostReceivers(CodedText::FromJsonText(code), item);
    if (item.severity == ESeverity::Ok && mode) item.word += QStringLiteral(", ") + modeWord;
    item.detail = JudgementText(QT_TRANSLATE_NOOP("Judgement", "Boot state: %1")).arg(bootWord);
    if (mode)
        item.detail +=
            QLatin1Char('\n') + JudgementText(QT_TRANSLATE_NOOP("Judgement", "Mode: %1")).arg(modeWord);
    if (!connection.isEmpty())
        item.detail += QLatin1Char('\n') +
                       JudgementText(QT_TRANSLATE_NOOP("Judgement", "Connection: %1")).arg(connection);
    return item;
}
