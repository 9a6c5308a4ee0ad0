// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/overview/answerline.h>

#include <apps/common/iclock.h>
#include <apps/mcconsole/tune/serveranswer.h>
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

ESeverity SeverityOf(ServerAnswer::EKind kind) {
    switch (kind) {
        case ServerAnswer::EKind::Done:
            return ESeverity::Ok;
        case ServerAnswer::EKind::DoneUnsupervised:
            return ESeverity::Look;  // nobody watches over that grant
        case ServerAnswer::EKind::Refused:
        case ServerAnswer::EKind::Ended:
            return ESeverity::Act;
        case ServerAnswer::EKind::Unknown:
            break;
    }
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
    if (&binding == &m_answer && code == changecode::ContentChanged)
        ShowAnswer(ServerAnswer(TextOfValue(m_answer), TextOfValue(m_code)));
}

void AnswerLine::ShowAnswer(const ServerAnswer& answer) {
    m_severity = SeverityOf(answer.GetKind());
    const QString text = answer.GetText();
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
    m_icon->setPixmap(severitylook::Icon(m_severity, *style()).pixmap(size));
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, severitylook::Colour(m_severity, palette()));
    m_text->setPalette(colours);
}
