// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/undobar.h>

#include <platform/widgets/useredit.h>

#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

#include <cstddef>
#include <utility>

UndoBar::UndoBar(IClock& clock, QWidget* parent)
    : QFrame(parent), m_text(new QLabel(this)), m_button(new QPushButton(tr("&Undo"), this)), m_timer(clock) {
    setObjectName(QStringLiteral("UndoBar"));
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    setForegroundRole(QPalette::ToolTipText);
    m_text->setObjectName(QStringLiteral("UndoText"));
    m_text->setTextFormat(Qt::PlainText);
    m_text->setForegroundRole(QPalette::ToolTipText);
    m_text->setWordWrap(true);
    m_text->setMinimumWidth(1);  // long words in it do not make the window wider
    m_button->setObjectName(QStringLiteral("Undo"));
    auto* const layout = new QHBoxLayout(this);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_button);
    connect(m_button, &QPushButton::clicked, this, &UndoBar::Undo);
    hide();
}

void UndoBar::Offer(const QString& what, const std::function<void()>& undo) {
    constexpr std::size_t most = 10;  // nobody does more within the time and wants it back
    if (m_offered.size() == most) m_offered.erase(m_offered.begin());
    m_offered.push_back({what, undo});
    Show();
}

void UndoBar::Show() {
    const QString& what = m_offered.back().what;
    const QString text = m_place.isEmpty() ? what : QStringLiteral("%1: %2").arg(m_place, what);
    m_text->setText(text);
    m_button->setAccessibleDescription(text);
    show();
    m_timer.Start(Patience, [this] { Withdraw(); });
}

void UndoBar::Withdraw() {
    m_timer.Stop();
    m_offered.clear();
    hide();
}

void UndoBar::Undo() {
    if (m_offered.empty()) return;
    const std::function<void()> undo = std::move(m_offered.back().undo);
    m_offered.pop_back();
    if (m_offered.empty())
        Withdraw();
    else
        Show();
    const UserEdit edit;
    if (undo) undo();
}
