// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/overview/answerline.h>

#include <apps/common/codedtext.h>
#include <apps/common/iclock.h>
#include <apps/pages/severitylook.h>

#include <platform/values/value.h>
#include <platform/values/visit.h>
#include <platform/widgets/valuetext.h>

#include <QtCore/QEvent>
#include <QtGui/QTextDocument>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStyle>

namespace {

constexpr int MaxAnswerLength = 200;

struct AnswerKind {
    const char* prefix;  ///< as the server writes it
    ESeverity severity;
};

constexpr AnswerKind AnswerKinds[] = {
    {"done: ", ESeverity::Ok},
    {"done, not supervised: ", ESeverity::Look},  // nobody watches over that grant
    {"refused: ", ESeverity::Act},
    {"ended: ", ESeverity::Act},
};

ESeverity SeverityOfAnswer(const QString& answer) {
    for (const AnswerKind& kind : AnswerKinds)
        if (answer.startsWith(QLatin1String(kind.prefix))) return kind.severity;
    return ESeverity::Unknown;
}

bool IsText(const values::ValueBase& value) {
    return values::Is<values::Value<QString>>(value);
}

QString TextOfValue(const PathBinding& binding) {
    const auto* const value = static_cast<const values::Value<QString>*>(binding.GetValue());
    return value != nullptr ? value->GetValue() : QString();
}

}  // namespace

AnswerLine::AnswerLine(IClock& clock, QWidget* parent)
    : QWidget(parent),
      m_clock(clock),
      m_answer(*this, IsText),
      m_code(*this, IsText),
      m_icon(new QLabel(this)),
      m_time(new QLabel(this)),
      m_text(new QLabel(tr("The server's answers to requests stand here."), this)) {
    m_icon->setObjectName(QStringLiteral("AnswerIcon"));
    m_time->setObjectName(QStringLiteral("AnswerTime"));
    m_text->setObjectName(QStringLiteral("AnswerText"));
    m_text->setTextFormat(Qt::PlainText);
    m_text->setMinimumWidth(1);  // long answers do not make the window wider
    m_text->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_icon);
    layout->addWidget(m_time);
    layout->addWidget(m_text, 1);
    m_icon->hide();
    m_time->hide();
    ShowColours();
}

void AnswerLine::Bind(const QString& path) {
    if (path != m_path) {
        m_path = path;
        m_severity = ESeverity::Unknown;
        ShowColours();
    }
    m_code.SetPath(path.isEmpty() ? QString() : path + QLatin1String("/Request/AnswerCode"));
    m_answer.SetPath(path.isEmpty() ? QString() : path + QLatin1String("/Request/Answer"));
}

void AnswerLine::OnBindingChanged(PathBinding& binding, TChangeCode code) {
    if (&binding == &m_answer && code == changecode::ContentChanged) ShowAnswer(TextOfValue(binding));
}

void AnswerLine::ShowAnswer(const QString& answer) {
    m_severity = SeverityOfAnswer(answer);
    // The code is set just before; one that says something else belongs to another answer.
    const QString text = CodedText::TranslatedBeside(answer, TextOfValue(m_code));
    m_time->setText(m_clock.TimeOfDay().toString(QStringLiteral("HH:mm:ss")));
    m_text->setText(valuetext::Shortened(text, MaxAnswerLength));
    m_text->setToolTip(Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal));
    setAccessibleName(m_time->text() + QLatin1Char(' ') + m_text->text());
    m_icon->show();
    m_time->show();
    ShowColours();
}

void AnswerLine::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) ShowColours();
}

void AnswerLine::ShowColours() {
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    m_icon->setPixmap(severitylook::Icon(m_severity, *this).pixmap(size));
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, severitylook::Colour(m_severity, palette()));
    m_text->setPalette(colours);
}
