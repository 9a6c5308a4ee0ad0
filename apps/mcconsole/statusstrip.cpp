// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/statusstrip.h>

#include <apps/mcconsole/session/situation.h>
#include <apps/mcconsole/statusbutton.h>

#include <QtWidgets/QHBoxLayout>

namespace {

constexpr const char* ButtonNames[] = {"ServerState", "DeviceState", "MasterState", "SuppressionState",
                                       "OwnState"};

}  // namespace

StatusStrip::StatusStrip(const Situation& situation, QWidget* parent)
    : QFrame(parent), m_situation(situation), m_shown(*this, [this] { Show(); }) {
    setObjectName(QStringLiteral("StatusStrip"));
    setAccessibleName(tr("Situation"));
    setFrameShape(QFrame::StyledPanel);
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    for (const Situation::EItem item : Situation::All) {
        const char* const name = ButtonNames[static_cast<std::size_t>(item)];
        auto* const button = new StatusButton(QString::fromLatin1(name), Situation::Caption(item), this);
        // As wide whatever a text says, so that nothing moves; the words of some are longer.
        const bool isShort = item == Situation::EItem::Server || item == Situation::EItem::Device;
        layout->addWidget(button, isShort ? 5 : 6);
        connect(button, &QToolButton::clicked, this,
                [this, button] { Q_EMIT PageRequested(button->GetItem().page); });
        m_buttons.push_back(button);
    }
    connect(&situation, &Situation::Changed, &m_shown, &WhenSeen::Refresh);
    Show();
}

void StatusStrip::Show() {
    for (const Situation::EItem item : Situation::All) {
        StatusButton* const button = m_buttons[static_cast<std::size_t>(item)];
        if (!(button->GetItem() == m_situation.Get(item))) button->Show(m_situation.Get(item));
    }
}
