// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcsconfigdisplay.h>

#include <devicecontrol/multichannelserver/common/displays/displaypath.h>
#include <devicecontrol/multichannelserver/common/displays/formrow.h>
#include <devicecontrol/multichannelserver/common/mcsconfigdata.h>

#include <platform/device/stddevicedefinition.h>
#include <platform/values/tree.h>
#include <platform/widgets/vccheckbox.h>
#include <platform/widgets/vccomboboxclassic.h>
#include <platform/widgets/vclineedit.h>
#include <platform/widgets/vcnumericfloatspin.h>

#include <QtCore/QPointer>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

#include <utility>

namespace {

QGridLayout* NewGrid(QGroupBox& group) {
    auto* const grid = new QGridLayout(&group);
    grid->setMargin(11);
    grid->setSpacing(6);
    grid->setAlignment(Qt::AlignTop);
    return grid;
}

/// Adds a row of both columns for a box that carries its own text.
void AddCheckBox(QGridLayout& grid, VCCheckBox& box, const char* objectName, const QString& text) {
    box.setObjectName(QLatin1String(objectName));
    box.SetText(text);
    formrow::SetSpokenName(box, text);
    grid.addWidget(&box, grid.rowCount(), 0, 1, 2);
}

}  // namespace

MCSConfigDisplay::MCSConfigDisplay(MCSConfigDisplay::Flags flags, QWidget* parent, const char* name,
                                   Qt::WindowFlags windowFlags)
    : QWidget(parent, windowFlags), m_flags(flags) {
    setObjectName(name != nullptr ? QString::fromUtf8(name) : QStringLiteral("MCSConfigDisplay"));
    MCSConfigDisplay::Build();
    MCSConfigDisplay::SetFlags(flags);
    MCSConfigDisplay::SetConfig_ValuePath(QString());
}

MCSConfigDisplay::MCSConfigDisplay(QWidget* parent)
    : MCSConfigDisplay(BootConfigGroup | JobConfigGroup, parent) {}

MCSConfigDisplay::~MCSConfigDisplay() {
    MCSConfigDisplay::SetConfig_ValuePath(QString());
}

void MCSConfigDisplay::Build() {
    auto* const layout = new QVBoxLayout(this);
    layout->setMargin(0);
    layout->setSpacing(5);
    BuildBootConfigGroup(this);
    layout->addWidget(m_bootConfigGroup);
    BuildJobConfigGroup(this);
    layout->addWidget(m_jobConfigGroup);
}

void MCSConfigDisplay::BuildBootConfigGroup(QWidget* parent) {
    m_bootConfigGroup = new QGroupBox(tr("Connection"), parent);
    m_bootConfigGroup->setObjectName(QStringLiteral("Connection"));
    QGridLayout* const grid = NewGrid(*m_bootConfigGroup);
    // In the order in which the keyboard goes through them.
    m_deviceNameDisp = new VCLineEdit(m_bootConfigGroup, nullptr, LineEditNormal);
    m_deviceAddressDisp = new VCLineEdit(m_bootConfigGroup, nullptr, LineEditNormal);
    m_connectOnStartUpDisp = new VCCheckBox(m_bootConfigGroup, nullptr);
    m_forceConnectDisp = new VCCheckBox(m_bootConfigGroup, nullptr);

    formrow::Add(*grid, {tr("DF Station Name:"), m_deviceNameDisp, "deviceNameDisp"});
    // fixed: object-names, and this one has a single "d".
    formrow::Add(*grid, {tr("DF Address:"), m_deviceAddressDisp, "deviceAdressDisp"});
    AddCheckBox(*grid, *m_connectOnStartUpDisp, "connectOnStartUpDisp", tr("Connect on startup"));
    AddCheckBox(*grid, *m_forceConnectDisp, "forceConnectDisp",
                tr("Force connection if DF device is already in use"));
}

void MCSConfigDisplay::BuildJobConfigGroup(QWidget* parent) {
    m_jobConfigGroup = new QGroupBox(tr("Job Settings"), parent);
    m_jobConfigGroup->setObjectName(QStringLiteral("Job Settings"));
    QGridLayout* const grid = NewGrid(*m_jobConfigGroup);
    m_numberOfFreqChannelsDisp = new VCNumericFloatSpin(m_jobConfigGroup, nullptr, true);
    m_defaultScanAveragingTimeDisp = new VCComboBoxClassic(m_jobConfigGroup, nullptr);

    m_numberOfFreqChannelsCaption =
        formrow::Add(*grid, {tr("Number of Frequency Channels for FFM:"), m_numberOfFreqChannelsDisp,
                             "numberOfFreqChannelDisp", Qt::AlignLeft});
    formrow::Add(*grid, {tr("Scan Averaging Time:"), m_defaultScanAveragingTimeDisp,
                         "defaultScanAveragingTime", Qt::AlignLeft});
}

MCSConfigDisplay::Flags MCSConfigDisplay::GetFlags() const {
    return m_flags;
}

void MCSConfigDisplay::SetFlags(Flags flags) {
    m_flags = flags;
    m_bootConfigGroup->setVisible((flags & BootConfigGroup) != 0);
    m_jobConfigGroup->setVisible((flags & JobConfigGroup) != 0);
}

void MCSConfigDisplay::ShowGroup(Flags group, bool isShown) {
    SetFlags(static_cast<Flags>(isShown ? m_flags | group : m_flags & ~group));
}

QByteArray MCSConfigDisplay::GetValuePath() const {
    return DisplayPath::Of(*this).toUtf8();
}

void MCSConfigDisplay::SetValuePath(const QByteArray& path) {
    DisplayPath::Set(*this, QString::fromUtf8(path),
                     [this](const QString& there) { SetConfig_ValuePath(there); });
}

bool MCSConfigDisplay::SetConfig_ValuePath(const QString& path) {
    const values::Tree* const tree = values::Tree::Instance();
    const bool isThere = !path.isEmpty() && tree != nullptr && tree->FindNode(path) != nullptr;
    const QPointer<MCSConfigDisplay> self(this);
    const unsigned binding = ++m_bindings;
    m_config.reset();
    auto config = isThere ? std::make_unique<MCSConfigData>(&path, false) : nullptr;
    // Whoever heard of the values that this added may have destroyed the display or bound it anew.
    if (self.isNull() || m_bindings != binding) return isThere;
    m_config = std::move(config);
    using PathAccessor = QString (MCSConfigData::*)() const;
    const auto pathOf = [this](PathAccessor accessor) {
        return m_config != nullptr ? ((*m_config).*accessor)() : QString();
    };
    m_deviceAddressDisp->SetText_ValuePath(pathOf(&MCSConfigData::GetDeviceAddress_ValuePath));
    m_deviceNameDisp->SetText_ValuePath(pathOf(&MCSConfigData::GetDeviceName_ValuePath));
    m_connectOnStartUpDisp->Set_ValuePath(pathOf(&MCSConfigData::GetConnectOnStartup_ValuePath));
    m_forceConnectDisp->Set_ValuePath(pathOf(&MCSConfigData::GetForceConnect_ValuePath));
    m_numberOfFreqChannelsDisp->SetNumericInt_ValuePath(
        pathOf(&MCSConfigData::GetNumberOfFreqChannels_ValuePath));
    m_defaultScanAveragingTimeDisp->SetValueSelection_ValuePath(
        pathOf(&MCSConfigData::GetDefaultScanAveragingTime_ValuePath));
    return isThere;
}

void MCSConfigDisplay::EnableBootConfigGroup(bool isEnabled) {
    m_bootConfigGroup->setEnabled(isEnabled);
}

void MCSConfigDisplay::EnableJobConfigGroup(bool isEnabled) {
    m_jobConfigGroup->setEnabled(isEnabled);
}

void MCSConfigDisplay::SetDeviceType(long type) {
    const bool hasChannels = type != DeviceTypeWithoutFreqChannels;
    m_numberOfFreqChannelsDisp->setVisible(hasChannels);
    m_numberOfFreqChannelsCaption->setVisible(hasChannels);
}
