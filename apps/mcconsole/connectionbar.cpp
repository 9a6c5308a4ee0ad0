// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/connectionbar.h>

#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>

ConnectionBar::ConnectionBar(QWidget* parent)
    : QFrame(parent), m_text(new QLabel(this)), m_try(new QPushButton(tr("Tr&y now"), this)) {
    constexpr int Margin = 6;
    setObjectName(QStringLiteral("ConnectionBar"));
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    auto* const sign = new QLabel(this);
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    sign->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this).pixmap(size));
    m_text->setObjectName(QStringLiteral("Banner"));
    m_text->setTextFormat(Qt::PlainText);
    m_text->setForegroundRole(QPalette::ToolTipText);
    m_text->setWordWrap(true);
    m_text->setMinimumWidth(1);  // long words in it do not make the window wider
    m_try->setObjectName(QStringLiteral("TryNow"));
    m_try->setAccessibleName(tr("Try now to connect"));
    connect(m_try, &QPushButton::clicked, this, &ConnectionBar::TryRequested);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(Margin, Margin, Margin, Margin);
    row->addWidget(sign);
    row->addWidget(m_text, 1);
    row->addWidget(m_try);
    hide();
}

void ConnectionBar::Tell(const QString& text, bool mayTry) {
    if (m_text->text() != text) m_text->setText(text);
    m_try->setVisible(mayTry);
    setVisible(!text.isEmpty());
}
