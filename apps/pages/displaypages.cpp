// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/displaypages.h>

#include <apps/pages/holders.h>
#include <apps/pages/question.h>
#include <apps/pages/receivers/receivermodel.h>
#include <apps/pages/serverkeys.h>
#include <apps/pages/statetable.h>

#include <devicecontrol/multichannelserver/common/mcscommandsdisplay.h>
#include <devicecontrol/multichannelserver/common/mcskeys.h>
#include <devicecontrol/multichannelserver/common/mcslogdisplay.h>
#include <devicecontrol/multichannelserver/common/mcsstatusdisplay.h>

#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/widgets/vcpushbutton.h>

#include <QtCore/QPointer>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTableView>
#include <QtWidgets/QVBoxLayout>

namespace {

constexpr Qt::WindowFlags NoFlags;
constexpr std::chrono::milliseconds ReceiversInterval(500);  // as often as they are asked

/// Puts \a display at the top of \a page, as wide as that.
QVBoxLayout* LayOut(Page* page, QWidget* display) {
    auto* const layout = new QVBoxLayout(page);
    layout->addWidget(display);
    return layout;
}

}  // namespace

StatusPage::StatusPage(QWidget* parent)
    : Page(parent),
      m_display(new MCSStatusDisplay(this, nullptr, NoFlags)),
      m_receivers(new ReceiverModel(this)),
      m_receiversBox(BuildReceivers()),
      m_look(*this, [this] { LookAtReceivers(); }) {
    QVBoxLayout* const layout = LayOut(this, m_display);
    layout->addWidget(m_receiversBox, 1);
    layout->addStretch();
    connect(&m_tick, &QTimer::timeout, &m_look, &WhenSeen::Refresh);
    m_tick.start(ReceiversInterval);
}

QGroupBox* StatusPage::BuildReceivers() {
    auto* const box = new QGroupBox(tr("Receivers"), this);
    box->setObjectName(QStringLiteral("ReceiversBox"));
    QTableView* const table = statetable::New(*box, "Receivers", box->title());
    table->setModel(m_receivers);
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table->horizontalHeader()->setSectionResizeMode(ReceiverModel::Reason, QHeaderView::Stretch);
    (new QVBoxLayout(box))->addWidget(table);
    box->hide();
    return box;
}

void StatusPage::LookAtReceivers() {
    m_receivers->Look(m_path);
    m_receiversBox->setVisible(m_receivers->rowCount() > 0);
}

void StatusPage::Bind(const QString& basePath, EMCSControlTreeSegments segments) {
    m_path = SegmentPath(basePath, segments, StatusSegment);
    m_display->SetStatus_ValuePath(m_path);
    m_look.Refresh();
}

CommandsPage::CommandsPage(QWidget* parent)
    : Page(parent),
      m_display(new MCSCommandsDisplay(this, nullptr, NoFlags)),
      m_reconnect(new VCPushButton(this, "ReconnectModulesButton")),
      m_reconnectOffer(*this, [](const values::ValueBase&) { return true; }) {
    m_reconnect->hide();
    m_reconnect->setText(tr("Reconnect &input modules"));
    m_reconnect->setAccessibleName(tr("Reconnect input modules"));
    QVBoxLayout* const layout = LayOut(this, m_display);
    layout->addWidget(m_reconnect, 0, Qt::AlignLeft);
    layout->addStretch();
    const auto* const box = m_display->findChild<QCheckBox*>();
    // Who has something of the device is looked for before it goes.
    connect(box, &QCheckBox::pressed, this, [this] { m_users = FindUsers(); });
    connect(box, &QCheckBox::stateChanged, this, [this](int state) { OfferUndo(state == Qt::Checked); });
}

QString CommandsPage::FindUsers() const {
    return holders::ToText(holders::Find(m_basePath, [](const auto& holder) { return !holder.isIdle; }));
}

/// Somebody may use the device by now.
bool CommandsPage::MayLetGo() {
    return question::IsConfirmed(this, tr("Let go of the device"), tr("Let go"), [this] {
        const QString users = FindUsers();
        return users.isEmpty() ? users : tr("These lose what they have of it: %1.").arg(users);
    });
}

void CommandsPage::OfferUndo(bool isOn) {
    QString what = isOn ? tr("The server connects to its device.") : tr("The server lets go of its device.");
    if (!isOn && !m_users.isEmpty())
        what += QLatin1Char(' ') + tr("These lose what they have of it: %1.").arg(m_users);
    m_users.clear();
    Q_EMIT Acted(what, [page = QPointer<CommandsPage>(this), path = m_commandPath, isOn] {
        if (isOn && page != nullptr && !page->MayLetGo()) return;
        auto* const command = dynamic_cast<values::Value<bool>*>(values::Tree::Instance()->FindItem(path));
        if (command != nullptr) command->SetValue(!isOn);
    });
}

void CommandsPage::Bind(const QString& basePath, EMCSControlTreeSegments segments) {
    const QString path = SegmentPath(basePath, segments, CommandSegment);
    m_basePath = basePath;
    m_commandPath = Below(path, mcskeys::ShallBeConnected);
    m_display->SetCommands_ValuePath(path);
    m_reconnect->Set_ValuePath(Below(path, serverkeys::ReconnectModules));
    m_reconnectOffer.SetPath(Below(path, serverkeys::ReconnectModules));
}

void CommandsPage::OnBindingChanged(PathBinding& binding, TChangeCode) {
    m_reconnect->setVisible(binding.GetValue() != nullptr);
}

LogPage::LogPage(QWidget* parent) : Page(parent), m_display(new MCSLogDisplay(this, nullptr, NoFlags)) {
    LayOut(this, m_display);
}

void LogPage::Bind(const QString& basePath, EMCSControlTreeSegments segments) {
    const QString status = SegmentPath(basePath, segments, StatusSegment);
    m_display->SetLogMessage_ValuePath(Below(status, mcskeys::LogMessage));
}
