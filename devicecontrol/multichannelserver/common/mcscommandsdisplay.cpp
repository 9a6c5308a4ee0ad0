// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcscommandsdisplay.h>

#include <devicecontrol/multichannelserver/common/displays/displaypath.h>
#include <devicecontrol/multichannelserver/common/displays/formrow.h>
#include <devicecontrol/multichannelserver/common/mcscommands.h>

#include <platform/values/tree.h>
#include <platform/widgets/vccheckbox.h>

#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtWidgets/QGridLayout>

#include <utility>

// Said once more, where MinGW exports it.
constexpr decltype(MCSCommandsDisplay::LockTime) MCSCommandsDisplay::LockTime;

MCSCommandsDisplay::MCSCommandsDisplay(QWidget* parent, const char* name, Qt::WindowFlags flags)
    : QWidget(parent, flags) {
    setObjectName(name != nullptr ? QString::fromUtf8(name) : QStringLiteral("MCSCommandsDisplay"));
    MCSCommandsDisplay::Build();
    MCSCommandsDisplay::SetCommands_ValuePath(QString());
}

MCSCommandsDisplay::~MCSCommandsDisplay() {
    MCSCommandsDisplay::SetCommands_ValuePath(QString());
}

void MCSCommandsDisplay::Build() {
    auto* const grid = new QGridLayout(this);
    grid->setMargin(5);
    grid->setAlignment(Qt::AlignTop);
    m_shallBeConnectedDisp = new VCCheckBox(this, nullptr);
    m_shallBeConnectedDisp->setSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::Minimum);
    // fixed: object-names
    formrow::Add(*grid, {tr("Shall be connected to ORV:"), m_shallBeConnectedDisp, "shallBeConnectedState"});
    // By name, as is the timer below. (fixed: slots-by-name)
    connect(m_shallBeConnectedDisp, SIGNAL(stateChanged(int)), this,
            SLOT(on_m_pShallBeConnectedDisp_stateChanged(int)));
}

bool MCSCommandsDisplay::SetCommands_ValuePath(const QString& path) {
    const values::Tree* const tree = values::Tree::Instance();
    const bool isThere = !path.isEmpty() && tree != nullptr && tree->FindNode(path) != nullptr;
    const QPointer<MCSCommandsDisplay> self(this);
    const unsigned binding = ++m_bindings;
    m_commands.reset();
    auto commands = isThere ? std::make_unique<MCSCommands>(&path) : nullptr;
    // Whoever heard of the value that this added may have destroyed the display or bound it anew.
    if (self.isNull() || m_bindings != binding) return isThere;
    if (isThere) {
        m_commands = std::move(commands);
        m_shallBeConnectedDisp->Set_ValuePath(m_commands->GetShallBeConnected_ValuePath());
    }
    // Without a node the box stays bound to where it was, and goes on showing that. (fixed: box-stays-bound)
    m_shallBeConnectedDisp->setEnabled(isThere);
    return isThere;
}

QByteArray MCSCommandsDisplay::GetValuePath() const {
    return DisplayPath::Of(*this).toUtf8();
}

void MCSCommandsDisplay::SetValuePath(const QByteArray& path) {
    DisplayPath::Set(*this, QString::fromUtf8(path),
                     [this](const QString& there) { SetCommands_ValuePath(there); });
}

/// A disabled widget passes the focus on to the next one, which would get what somebody types meanwhile: this
/// display keeps it until the box is back.
void MCSCommandsDisplay::on_m_pShallBeConnectedDisp_stateChanged(int) {
    const bool hasFocus = window()->focusWidget() == m_shallBeConnectedDisp;
    const QPointer<MCSCommandsDisplay> self(this);
    m_shallBeConnectedDisp->setEnabled(false);
    if (hasFocus && !self.isNull()) setFocus();
    if (self.isNull()) return;  // who got the focus may have done anything
    ++m_locks;
    QTimer::singleShot(LockTime, this, SLOT(enableConnectionCheckbox()));
}

/// Once for each click: a box that stays locked here waits for the next binding. (fixed: unlocked-once)
void MCSCommandsDisplay::enableConnectionCheckbox() {
    if (m_locks > 0 && --m_locks > 0) return;  // a later click, on a box that was bound anew meanwhile
    const values::Value<bool>* const value =
        m_commands != nullptr ? m_commands->GetShallBeConnectedValue() : nullptr;
    if (value == nullptr || value->GetState() == values::Stale) return;
    m_shallBeConnectedDisp->setEnabled(true);
    if (window()->focusWidget() == this) m_shallBeConnectedDisp->setFocus();
}
