// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/overview/restoreoffer.h>

#include <apps/mcconsole/overview/heldbefore.h>
#include <apps/mcconsole/session/judgement.h>

#include <platform/widgets/valuetext.h>

#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

namespace {

constexpr int OfferMargin = 4;       // pixels beside the text
constexpr int MaxReasonLength = 60;  // characters of what the server says

}  // namespace

RestoreOffer::RestoreOffer(HeldBefore& held, QWidget* parent)
    : QFrame(parent), m_held(held), m_text(new QLabel(this)) {
    setFrameShape(QFrame::StyledPanel);
    m_text->setObjectName(QStringLiteral("RestoreText"));
    m_text->setTextFormat(Qt::PlainText);
    auto* const restore = new QPushButton(tr("Rest&ore"), this);
    restore->setObjectName(QStringLiteral("Restore"));
    auto* const dismiss = new QPushButton(tr("Dismiss"), this);
    dismiss->setObjectName(QStringLiteral("DismissRestore"));
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(OfferMargin, 0, 0, 0);
    layout->addWidget(m_text, 1);
    layout->addWidget(restore);
    layout->addWidget(dismiss);
    connect(restore, &QPushButton::clicked, &m_held, &HeldBefore::Restore);
    connect(dismiss, &QPushButton::clicked, &m_held, &HeldBefore::Dismiss);
    connect(&m_held, &HeldBefore::Changed, this, &RestoreOffer::Show);
    Show();
}

void RestoreOffer::ShowHere(bool isHere) {
    m_isHere = isHere;
    Show();
}

QString RestoreOffer::Text() const {
    const HeldBefore::Held offer = m_held.GetOffer();
    const QString lost = m_held.GetLostAt().toString(QStringLiteral("HH:mm:ss"));
    if (!offer.hz) return tr("Was job master until %1").arg(lost);
    const QString frequency = judgement::Frequency(*offer.hz);
    return offer.isMaster ? tr("Was job master and at %1 until %2").arg(frequency, lost)
                          : tr("Was at %1 until %2").arg(frequency, lost);
}

void RestoreOffer::Show() {
    const QString refusal = m_held.GetRefusal();
    QString text = Text();
    if (const QString& other = m_held.GetOtherMaster(); !other.isEmpty())
        text += QStringLiteral("; ") +
                tr("%1 is job master now").arg(valuetext::Shortened(other, MaxReasonLength));
    m_text->setText(refusal.isEmpty()
                        ? text
                        : tr("%1; refused: %2").arg(text, valuetext::Shortened(refusal, MaxReasonLength)));
    m_text->setToolTip(refusal);
    setAccessibleName(m_text->text());
    setVisible(m_isHere && m_held.GetOffer().IsAnything());
}
