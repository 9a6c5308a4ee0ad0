// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/statusbutton.h>

#include <apps/pages/severitylook.h>

#include <QtCore/QEvent>
#include <QtGui/QTextDocument>
#include <QtWidgets/QStyle>

namespace {

constexpr int ButtonMargin = 4;           // pixels around icon and text, and between them
constexpr int LeastButtonCharacters = 6;  // that are seen in a narrow window

}  // namespace

StatusButton::StatusButton(const QString& name, const QString& caption, QWidget* parent)
    : QToolButton(parent), m_caption(caption) {
    setObjectName(name);
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setAutoRaise(true);
    setAutoFillBackground(true);  // or each new word has all drawn anew that lies below it
    setBackgroundRole(QPalette::Window);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    const int size = style()->pixelMetric(QStyle::PM_ButtonIconSize, nullptr, this);
    setIconSize(QSize(size, size));
    Show(m_item);
}

void StatusButton::Show(const SituationItem& item) {
    if (item == m_item && m_iconSeverity) return;
    m_item = item;
    const QString title = QStringLiteral("%1: %2").arg(CaptionWithAge(), item.word);
    // As text, whatever others chose for a name.
    const QString tip = item.detail.isEmpty() ? title : title + QLatin1Char('\n') + item.detail;
    setToolTip(Qt::convertFromPlainText(tip, Qt::WhiteSpaceNormal));
    setAccessibleName(QStringLiteral("%1 (%2)").arg(title, severitylook::Word(item.severity)));
    setAccessibleDescription(item.detail);
    ShowLook();
}

QString StatusButton::CaptionWithAge() const {
    return m_item.age.isEmpty() ? m_caption : QStringLiteral("%1, %2").arg(m_caption, m_item.age);
}

void StatusButton::ShowLook() {
    const QColor colour = severitylook::Colour(m_item.severity, palette());
    if (palette().color(QPalette::ButtonText) != colour) {
        QPalette colours = palette();
        colours.setColor(QPalette::ButtonText, colour);
        setPalette(colours);
    }
    QFont weight = font();
    weight.setBold(m_item.severity == ESeverity::Act);
    if (weight != font()) setFont(weight);
    // Words change every second, icons seldom; one is read from a file of the style each time.
    if (m_iconSeverity != m_item.severity) {
        m_iconSeverity = m_item.severity;
        setIcon(severitylook::Icon(m_item.severity, *style()));
    }
    ShowText();
}

void StatusButton::ShowText() {
    const QFontMetrics metrics = fontMetrics();
    const auto fitting = [&](const QString& text) {
        return metrics.elidedText(text, Qt::ElideRight, TextWidth());
    };
    const auto chosen = [&](const QString& text, const QString& brief) {
        const QString shown = fitting(text);
        return shown == text || brief.isEmpty() ? shown : fitting(brief);
    };
    QString text =
        chosen(CaptionWithAge(), m_caption) + QLatin1Char('\n') + chosen(m_item.word, m_item.brief);
    // What is a mark of a key to the button is a character to whoever chose the name.
    text.replace(QLatin1Char('&'), QLatin1String("&&"));
    if (text != this->text()) setText(text);
}

int StatusButton::TextWidth() const {
    return width() - iconSize().width() - 3 * ButtonMargin;
}

QSize StatusButton::SizeFor(int textWidth) const {
    const int height = qMax(iconSize().height(), 2 * fontMetrics().lineSpacing());
    return QSize(textWidth + iconSize().width() + 3 * ButtonMargin, height + ButtonMargin);
}

QSize StatusButton::sizeHint() const {
    return minimumSizeHint();
}

QSize StatusButton::minimumSizeHint() const {
    return SizeFor(LeastButtonCharacters * fontMetrics().averageCharWidth());
}

void StatusButton::resizeEvent(QResizeEvent* event) {
    QToolButton::resizeEvent(event);
    ShowText();
}

void StatusButton::changeEvent(QEvent* event) {
    QToolButton::changeEvent(event);
    if (event->type() == QEvent::StyleChange) m_iconSeverity.reset();
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) ShowLook();
}
