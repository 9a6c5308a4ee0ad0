// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/unsupervisedbar.h>

#include <apps/pages/frequencylist.h>
#include <apps/pages/severitylook.h>

#include <platform/values/valuebase.h>
#include <platform/widgets/vcpushbutton.h>

#include <QtCore/QEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>

UnsupervisedBar::UnsupervisedBar(QWidget* parent)
    : QFrame(parent),
      m_icon(new QLabel(this)),
      m_text(new QLabel(this)),
      m_reconnect(new VCPushButton(this, "AlarmReconnect")),
      m_acknowledge(new QPushButton(tr("Ac&knowledge"), this)),
      m_offer(*this, [](const values::ValueBase&) { return true; }) {
    setObjectName(QStringLiteral("AlarmBar"));
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    m_text->setObjectName(QStringLiteral("AlarmText"));
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setMinimumWidth(1);  // many frequencies do not make the window wider
    m_reconnect->setText(tr("Reco&nnect"));
    m_reconnect->setAccessibleName(tr("Reconnect the input modules"));
    m_acknowledge->setObjectName(QStringLiteral("Acknowledge"));
    m_acknowledge->setToolTip(tr("Takes this bar away in this window until another frequency is lost."));
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 3, 6, 3);
    layout->addWidget(m_icon);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_reconnect);
    layout->addWidget(m_acknowledge);
    connect(m_acknowledge, &QPushButton::clicked, this, &UnsupervisedBar::Acknowledge);
    m_reconnect->hide();
    hide();
    ShowColours();
}

void UnsupervisedBar::BindReconnect(const QString& path) {
    m_reconnect->Set_ValuePath(path);
    m_offer.SetPath(path);
}

void UnsupervisedBar::OnBindingChanged(PathBinding&, TChangeCode) {
    const bool isOffered = m_offer.GetState() == EBindingState::Live && m_offer.GetValue()->IsWritable();
    m_reconnect->setVisible(isOffered);
}

/// While the connection is lost nobody knows what is supervised: then others say so, and what was
/// acknowledged stays so.
void UnsupervisedBar::ShowLost(const std::vector<double>* lost) {
    if (lost == nullptr) return hide();
    if (*lost != m_lost) {
        m_lost = *lost;
        // What is watched again alarms again when it is lost the next time.
        std::set<double> kept;
        for (const double hz : m_lost)
            if (m_acknowledged.count(hz) != 0) kept.insert(hz);
        m_acknowledged = std::move(kept);
        const QString text =
            tr("NOT SUPERVISED: %1. A keyed transmitter is not seen there.").arg(frequencylist::Of(m_lost));
        m_text->setText(text);
        setAccessibleName(text);
    }
    setVisible(m_acknowledged.size() < m_lost.size());
}

void UnsupervisedBar::Acknowledge() {
    m_acknowledged = std::set<double>(m_lost.begin(), m_lost.end());
    hide();
}

void UnsupervisedBar::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) ShowColours();
}

void UnsupervisedBar::ShowColours() {
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    m_icon->setPixmap(severitylook::Icon(ESeverity::Act, *style()).pixmap(size));
    QPalette colours = m_text->palette();
    const QColor colour = severitylook::Colour(ESeverity::Act, palette());
    if (colours.color(QPalette::WindowText) == colour) return;
    colours.setColor(QPalette::WindowText, colour);
    m_text->setPalette(colours);
    QFont bold = m_text->font();
    bold.setBold(true);
    m_text->setFont(bold);
}
