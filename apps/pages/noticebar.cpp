// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/noticebar.h>

#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStyle>
#include <QtWidgets/QToolButton>

NoticeBar::NoticeBar(QWidget* parent)
    : QFrame(parent), m_sign(new QLabel(this)), m_text(new QLabel(this)), m_dismiss(new QToolButton(this)) {
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    m_text->setObjectName(QStringLiteral("NoticeText"));
    m_text->setForegroundRole(QPalette::ToolTipText);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_text->setWordWrap(true);
    m_dismiss->setObjectName(QStringLiteral("Dismiss"));
    m_dismiss->setText(tr("&Dismiss"));
    connect(m_dismiss, &QToolButton::clicked, this, &QWidget::hide);
    auto* const row = new QHBoxLayout(this);
    row->addWidget(m_sign);
    row->addWidget(m_text, 1);
    row->addWidget(m_dismiss);
    hide();
}

void NoticeBar::Tell(ESeverity severity, const QString& text) {
    const bool isWarning = severity == ESeverity::Warning;
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    const QIcon sign = style()->standardIcon(
        isWarning ? QStyle::SP_MessageBoxWarning : QStyle::SP_MessageBoxInformation, nullptr, this);
    m_sign->setPixmap(sign.pixmap(size));
    m_sign->setAccessibleName(isWarning ? tr("Warning") : tr("Note"));
    m_text->setText(text);
    setAccessibleName(text);
    setVisible(!text.isEmpty());
}

QString NoticeBar::GetText() const {
    return m_text->text();
}
