// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/overview/answerline.h>

#include <apps/common/iclock.h>
#include <apps/pages/severitylook.h>

#include <platform/values/value.h>
#include <platform/values/visit.h>
#include <platform/widgets/valuetext.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtGui/QTextDocument>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStyle>

namespace {

constexpr int MaxAnswerLength = 200;

struct AnswerKind {
    const char* prefix;  ///< as the server writes it
    const char* word;
    ESeverity severity;
};

constexpr AnswerKind AnswerKinds[] = {
    {"done: ", QT_TRANSLATE_NOOP("AnswerLine", "Done: %1"), ESeverity::Ok},
    {"refused: ", QT_TRANSLATE_NOOP("AnswerLine", "Refused: %1"), ESeverity::Act},
    {"ended: ", QT_TRANSLATE_NOOP("AnswerLine", "Ended: %1"), ESeverity::Act},
};

/// A grant that nobody watches over is one to look at.
bool IsUnsupervised(const QString& answer) {
    return answer.contains(QLatin1String("not supervised"));
}

}  // namespace

AnswerLine::AnswerLine(IClock& clock, QWidget* parent)
    : QWidget(parent),
      m_clock(clock),
      m_answer(*this,
               [](const values::ValueBase& value) { return values::Is<values::Value<QString>>(value); }),
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
    m_answer.SetPath(path.isEmpty() ? QString() : path + QLatin1String("/Request/Answer"));
}

void AnswerLine::OnBindingChanged(PathBinding& binding, TChangeCode code) {
    if (code != changecode::ContentChanged) return;
    ShowAnswer(static_cast<values::Value<QString>*>(binding.GetValue())->GetValue());
}

void AnswerLine::ShowAnswer(const QString& answer) {
    QString text = answer;
    m_severity = ESeverity::Unknown;
    for (const AnswerKind& kind : AnswerKinds) {
        const QLatin1String prefix(kind.prefix);
        if (!answer.startsWith(prefix)) continue;
        text = QCoreApplication::translate("AnswerLine", kind.word).arg(answer.mid(prefix.size()));
        m_severity = kind.severity;
    }
    if (m_severity == ESeverity::Ok && IsUnsupervised(answer)) m_severity = ESeverity::Look;
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
