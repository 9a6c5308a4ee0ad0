// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/session/judgementparts.h>

#include <platform/widgets/valuetext.h>

#include <QtCore/QCoreApplication>

namespace {

constexpr int MaxJudgedName = 40;     // of what others chose
constexpr int MaxJudgedReason = 200;  // of what the server says

}  // namespace

QString judgementparts::JudgementText(const char* text) {
    return QCoreApplication::translate("Judgement", text);
}

SituationItem judgementparts::MakeItem(ESeverity severity, const QString& word, const char* page) {
    return {severity, word, QString(), QString(), QString::fromLatin1(page), QString()};
}

SituationItem judgementparts::UnknownItem(const char* page) {
    SituationItem item =
        MakeItem(ESeverity::Unknown, JudgementText(QT_TRANSLATE_NOOP("Judgement", "unknown")), page);
    item.detail = JudgementText(QT_TRANSLATE_NOOP("Judgement", "The server does not tell."));
    return item;
}

QString judgementparts::ShortName(const QString& name) {
    return valuetext::Shortened(name, MaxJudgedName);
}

QString judgementparts::ShortReason(const QString& reason) {
    return valuetext::Shortened(reason, MaxJudgedReason);
}
