// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/tune/serveranswer.h>

namespace {

struct KindOfAnswer {
    ECode code;
    const char* prefix;  ///< for servers that tell no code
    ServerAnswer::EKind kind;
};

constexpr KindOfAnswer KindsOfAnswers[] = {
    {ECode::Done, "done: ", ServerAnswer::EKind::Done},
    {ECode::DoneUnsupervised, "done, not supervised: ", ServerAnswer::EKind::DoneUnsupervised},
    {ECode::Refused, "refused: ", ServerAnswer::EKind::Refused},
    {ECode::Ended, "ended: ", ServerAnswer::EKind::Ended},
};

}  // namespace

ServerAnswer::ServerAnswer(const QString& text, const QString& code)
    : m_text(text), m_whole(CodedText::FromJsonText(code)) {
    // The code is set just before the text; one that says something else belongs to another answer.
    if (m_whole && m_whole->ToEnglish() != text) m_whole.reset();
    for (const KindOfAnswer& known : KindsOfAnswers) {
        const bool isCoded = m_whole && m_whole->GetCode() != ECode::Count;
        const bool isIt =
            isCoded ? m_whole->GetCode() == known.code : text.startsWith(QLatin1String(known.prefix));
        if (isIt) m_kind = known.kind;
    }
    if (m_whole && m_whole->GetArguments().size() == 1) m_said = m_whole->GetArguments().front();
}

QString ServerAnswer::GetText() const {
    return m_whole ? m_whole->Translated() : m_text;
}

QString ServerAnswer::GetReason() const {
    return m_said ? m_said->Translated() : m_text.section(QStringLiteral(": "), 1);
}
