// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/shownanswers.h>

#include <apps/common/codedtext.h>

#include <platform/values/tree.h>
#include <platform/values/visit.h>

#include <QtCore/QTime>

namespace {

bool IsAnswerText(const values::ValueBase& value) {
    return values::Is<values::Value<QString>>(value);
}

QString ContentOfAnswer(const PathBinding& binding) {
    const auto* const text = static_cast<const values::Value<QString>*>(binding.GetValue());
    return text != nullptr ? text->GetValue() : QString();
}

/// With a name that no other has: there may be several windows in a process.
values::Value<QString>* NewAnswerValue() {
    values::Node* const parent = values::Tree::Instance()->ProvideNode(QStringLiteral("/Gui"));
    if (parent == nullptr) return nullptr;
    int number = 1;
    const auto name = [&number] { return QStringLiteral("Answers%1").arg(number); };
    while (parent->FindChild(name()) != nullptr)
        ++number;
    auto* const value =
        static_cast<values::Value<QString>*>(parent->CreateChild(values::Value<QString>(), name()));
    if (value != nullptr) value->SetDelivery(values::EDelivery::EveryChange);
    return value;
}

}  // namespace

ShownAnswers::ShownAnswers()
    : m_code(*this, IsAnswerText), m_answer(*this, IsAnswerText), m_shown(*this, NewAnswerValue()) {}

ShownAnswers::~ShownAnswers() {
    values::Value<QString>* const shown = m_shown.Get();
    m_shown.End();
    if (shown != nullptr && values::Tree::Instance() != nullptr) values::Tree::Instance()->Delete(shown);
}

void ShownAnswers::Bind(const QString& path) {
    m_code.SetPath(path.isEmpty() ? QString() : path + QLatin1String("/Request/AnswerCode"));
    m_answer.SetPath(path.isEmpty() ? QString() : path + QLatin1String("/Request/Answer"));
}

QString ShownAnswers::GetPath() const {
    return m_shown ? m_shown->GetPathName() : QString();
}

/// The code is set before the answer. The last answer to another client of the MpxORV is shown as well.
void ShownAnswers::OnBindingChanged(PathBinding& binding, TChangeCode code) {
    const bool isTold = code == changecode::ContentChanged || code == PathBinding::Rebound;
    if (&binding != &m_answer || !isTold || !m_shown) return;
    const QString answer = ContentOfAnswer(m_answer);
    if (answer.isEmpty()) return;
    const QString time = QTime::currentTime().toString(QStringLiteral("HH:mm:ss"));
    const QString text = CodedText::TranslatedBeside(answer, ContentOfAnswer(m_code));
    // As text, whatever others chose for names: the display takes what looks like markup for markup.
    m_shown->SetValue(QStringLiteral("<span>%1 %2</span>")
                          .arg(time, text.toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br>"))));
}

void ShownAnswers::Update(Observable* source, TChangeCode code) {
    m_shown.EndIfGoingAway(source, code);
}
