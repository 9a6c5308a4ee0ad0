// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/view/remark.h>

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStyle>

Remark::Remark(QWidget* parent) : QFrame(parent), m_sign(new QLabel(this)), m_text(new QLabel(this)) {
    setObjectName(QStringLiteral("remark"));
    setFrameShape(QFrame::StyledPanel);
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    m_sign->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this).pixmap(size));
    m_sign->setAccessibleName(tr("Warning"));
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    auto* const row = new QHBoxLayout(this);
    row->addWidget(m_sign, 0, Qt::AlignTop);
    row->addWidget(m_text, 1);
}

void Remark::Show(Remark*& remark, const QString& text, QBoxLayout& layout, int place) {
    if (remark == nullptr && text.isEmpty()) return;
    if (remark == nullptr) {
        remark = new Remark(layout.parentWidget());
        layout.insertWidget(place, remark);
    }
    remark->SetText(text);
    remark->setVisible(!text.isEmpty());
}

QString Remark::GetText() const {
    return m_text->text();
}

void Remark::SetText(const QString& text) {
    m_text->setText(text);
    setAccessibleName(text);
}
