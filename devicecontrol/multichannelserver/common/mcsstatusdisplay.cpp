// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcsstatusdisplay.h>

#include <devicecontrol/multichannelserver/common/displays/displaypath.h>
#include <devicecontrol/multichannelserver/common/displays/formrow.h>
#include <devicecontrol/multichannelserver/common/mcsstatus.h>

#include <platform/device/stddevicedefinition.h>
#include <platform/values/tree.h>
#include <platform/values/valueaccess.h>
#include <platform/widgets/guicentral.h>
#include <platform/widgets/spokenlabel.h>
#include <platform/widgets/stalemark.h>
#include <platform/widgets/vclabel.h>

#include <QtCore/QLocale>
#include <QtCore/QPointer>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QLabel>

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <utility>

namespace {

constexpr int TextHeight = 20;        // pixels
constexpr int SpareColumn = 2;        // empty: takes all spare width
constexpr int FineSweepTime = 10000;  // µs: shorter ones are shown with fractions of a millisecond

QString Placeholder() {
    return QStringLiteral("- - -");  // fixed: untranslated-placeholder
}

/// Formatted as printf does it, since the catalogues hold such formats. (fixed: printf-formats)
template <class Number>
QString Printed(const QString& format, Number number) {
    QString text;
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    text.sprintf(format.toLatin1().constData(), number);
    QT_WARNING_POP
    return text;
}

/// With the decimal point of the user's language, which printf does not know.
QString WithDecimalPoint(QString number) {
    return number.replace(QLatin1Char('.'), QLocale().decimalPoint());
}

QString Arg(const QString& format, qint64 number) {
    return format.arg(number, 0, 10, QLatin1Char(' '));
}

bool IsSameAs(const values::ValueBase* value, const Observable* observable) {
    return value != nullptr && static_cast<const Observable*>(value) == observable;
}

bool IsSweeping(EOperationMode mode) {
    return mode == OperationScan || mode == OperationMemoryScan;
}

}  // namespace

MCSStatusDisplay::MCSStatusDisplay(QWidget* parent, const char* name, Qt::WindowFlags flags)
    : QWidget(parent, flags), m_bootStateNoValue(*this), m_operationModeNoValue(*this) {
    setObjectName(name != nullptr ? QString::fromUtf8(name) : QStringLiteral("MCSStatusDisplay"));
    for (Observation<Flag>* const flag : {&m_bootStateNoValue, &m_operationModeNoValue})
        flag->Begin(CreateNoValueFlag());
    MCSStatusDisplay::Build();
    MCSStatusDisplay::SetStatus_ValuePath(QString());
}

MCSStatusDisplay::~MCSStatusDisplay() {
    MCSStatusDisplay::SetStatus_ValuePath(QString());
}

MCSStatusDisplay::Flag* MCSStatusDisplay::CreateNoValueFlag() {
    const QString path = GuiCentral::Instance().CreateUniqueValueBoolean(false);
    return values::FindValue<Flag>(path, nullptr, nullptr);
}

void MCSStatusDisplay::Build() {
    auto* const grid = new QGridLayout(this);
    grid->setMargin(0);
    grid->setSpacing(3);
    grid->setAlignment(Qt::AlignTop);
    grid->setColumnStretch(SpareColumn, 100);

    const auto newValueLabel = [this] {
        auto* const label = new VCLabel(this, nullptr, 0);
        label->SetAlignmentNoValue(Qt::AlignLeft);
        return label;
    };
    const auto newTextLabel = [this] {
        auto* const label = new QLabel(this);
        label->setFixedHeight(TextHeight);
        spokenlabel::Install(*label);
        return label;
    };
    m_connectionStateDisp = newValueLabel();
    m_onlineDisp = newTextLabel();
    m_bootStateDisp = newValueLabel();
    m_operationModeDisp = newValueLabel();
    m_sweepTimeDisp = newTextLabel();
    m_freqChannelDisp = newTextLabel();
    m_jobTypeDisp = newTextLabel();
    m_numberOfORVsDisp = newTextLabel();

    formrow::Add(*grid, {tr("DF Device:"), m_connectionStateDisp, "connectionStateDisp"});
    formrow::Add(*grid, {tr("MultiChannel Server:"), m_onlineDisp, "onlineDisp"});
    formrow::Add(*grid, {tr("Boot State:"), m_bootStateDisp, "bootStateDisp"});
    formrow::Add(*grid, {tr("Operation Mode:"), m_operationModeDisp, "operationModeDisp"});
    formrow::Add(*grid, {tr("Sweep Time:"), m_sweepTimeDisp, "sweepTimeDisp"});
    m_freqChannelCaption =
        formrow::Add(*grid, {tr("Frequency Channels for FFM:"), m_freqChannelDisp, "freqChannelDisp"});
    formrow::Add(*grid, {tr("Current Job Type:"), m_jobTypeDisp, "jobTypeDisp"});
    // fixed: object-names, and this one has its "m" twice.
    formrow::Add(*grid, {tr("Multiplexed DFs:"), m_numberOfORVsDisp, "nummberOfORVsDisp"});
}

bool MCSStatusDisplay::SetStatus_ValuePath(const QString& path) {
    const values::Tree* const tree = values::Tree::Instance();
    const bool isThere = !path.isEmpty() && tree != nullptr && tree->FindNode(path) != nullptr;
    const QPointer<MCSStatusDisplay> self(this);
    Unbind();
    if (isThere)
        Bind(path);
    else
        ShowUnbound();
    if (!self.isNull()) MarkStaleLabels();
    return isThere;
}

QByteArray MCSStatusDisplay::GetValuePath() const {
    return DisplayPath::Of(*this).toUtf8();
}

void MCSStatusDisplay::SetValuePath(const QByteArray& path) {
    DisplayPath::Set(*this, QString::fromUtf8(path),
                     [this](const QString& there) { SetStatus_ValuePath(there); });
}

void MCSStatusDisplay::SetDeviceType(long type) {
    const bool hasChannels = type != DeviceTypeWithoutFreqChannels;
    m_freqChannelDisp->setVisible(hasChannels);
    m_freqChannelCaption->setVisible(hasChannels);
}

void MCSStatusDisplay::Unbind() {
    ++m_bindings;
    if (m_status == nullptr) return;
    for (values::ValueBase* const value : GetObservedValues()) {
        if (value != nullptr) value->DeleteObserver(this);
    }
    m_status.reset();
}

// Whoever hears of the values that this adds, or of the flags that it sets, may destroy the display or bind
// it anew, which ends this.
void MCSStatusDisplay::Bind(const QString& path) {
    const QPointer<MCSStatusDisplay> self(this);
    const auto holds = [&self, binding = m_bindings] {
        return !self.isNull() && self->m_bindings == binding;
    };
    auto status = std::make_unique<MCSStatus>(path);
    if (!holds()) return;
    m_status = std::move(status);
    m_connectionStateDisp->SetText_ValuePath(m_status->GetConnectionState_ValuePath(), true);
    m_bootStateDisp->SetText_ValuePath(m_status->GetBootState_ValuePath(), true);
    if (m_bootStateNoValue) m_bootStateDisp->SetNoValue_ValuePath(m_bootStateNoValue->GetPathName());
    m_operationModeDisp->SetText_ValuePath(m_status->GetOperationMode_ValuePath(), true);
    if (m_operationModeNoValue)
        m_operationModeDisp->SetNoValue_ValuePath(m_operationModeNoValue->GetPathName());
    for (values::ValueBase* const value : GetObservedValues()) {
        if (value != nullptr) value->AddObserver(this);
    }
    for (std::size_t i = 0; i < std::tuple_size_v<ObservedValues> && holds(); ++i)
        values::NotifyInitially(GetObservedValues()[i], this);  // a value may go meanwhile
}

void MCSStatusDisplay::ShowUnbound() {
    spokenlabel::SetText(*m_onlineDisp, Placeholder());
    m_connectionStateDisp->SetText_ValuePath(QString(), true);
    m_bootStateDisp->SetText_ValuePath(QString(), true);
    m_operationModeDisp->SetText_ValuePath(QString(), true);
    // Here the placeholder of the sweep time ends without a blank. (fixed: placeholder-blank)
    for (QLabel* const label : {m_freqChannelDisp, m_jobTypeDisp, m_numberOfORVsDisp, m_sweepTimeDisp})
        spokenlabel::SetText(*label, Placeholder());
}

MCSStatusDisplay::ObservedValues MCSStatusDisplay::GetObservedValues() const {
    return {m_status->GetOnlineValue(),           m_status->GetFreeFreqChannelsValue(),
            m_status->GetUsedFreqChannelsValue(), m_status->GetMcsMasterJobControlledValue(),
            m_status->GetStaticMpxORVsValue(),    m_status->GetDynamicMpxORVsValue(),
            m_status->GetOperationModeValue(),    m_status->GetSweepTimeValue()};
}

void MCSStatusDisplay::Update(Observable* observable, TChangeCode code) {
    if (code == changecode::StateChanged)
        UpdateOfState(observable);
    else if (code == changecode::ContentChanged && m_status != nullptr)
        UpdateOfContent(observable);
}

void MCSStatusDisplay::UpdateOfState(const Observable* observable) {
    for (Observation<Flag>* const flag : {&m_bootStateNoValue, &m_operationModeNoValue}) {
        if (!flag->Is(observable)) continue;
        flag->EndIfGoingAway(observable, changecode::StateChanged);
        return;
    }
    MarkStaleLabels();
}

void MCSStatusDisplay::UpdateOfContent(const Observable* observable) {
    const QPointer<MCSStatusDisplay> self(this);
    const auto update = [&self](std::initializer_list<void (MCSStatusDisplay::*)()> steps) {
        for (const auto step : steps)
            if (!self.isNull()) (self->*step)();
    };
    const auto isOneOf = [observable](std::initializer_list<const values::ValueBase*> candidates) {
        return std::any_of(
            candidates.begin(), candidates.end(),
            [observable](const values::ValueBase* value) { return IsSameAs(value, observable); });
    };
    if (isOneOf({m_status->GetOnlineValue()})) {
        using Display = MCSStatusDisplay;
        update({&Display::UpdateOnlineDisp, &Display::UpdateFreqChannelsDisp, &Display::UpdateJobTypeDisp,
                &Display::UpdateNumberOfORVsDisplay, &Display::UpdateSweepTimeDisp,
                &Display::UpdateNoValues});
    } else if (isOneOf({m_status->GetFreeFreqChannelsValue(), m_status->GetUsedFreqChannelsValue()})) {
        UpdateFreqChannelsDisp();
    } else if (isOneOf({m_status->GetMcsMasterJobControlledValue()})) {
        UpdateJobTypeDisp();
    } else if (isOneOf({m_status->GetStaticMpxORVsValue(), m_status->GetDynamicMpxORVsValue()})) {
        UpdateNumberOfORVsDisplay();
    } else if (isOneOf({m_status->GetOperationModeValue()})) {
        update({&MCSStatusDisplay::UpdateNoValues, &MCSStatusDisplay::UpdateSweepTimeDisp});
    } else if (isOneOf({m_status->GetSweepTimeValue()})) {
        UpdateSweepTimeDisp();
    }
}

void MCSStatusDisplay::MarkStaleLabels() {
    const auto valueOf = [this](auto accessor) -> const values::ValueBase* {
        return m_status != nullptr ? (m_status.get()->*accessor)() : nullptr;
    };
    const auto mark = [](QLabel& label, std::initializer_list<const values::ValueBase*> shown) {
        const bool isLive = std::all_of(shown.begin(), shown.end(), [](const values::ValueBase* value) {
            return value != nullptr && value->GetState() == values::Valid;
        });
        if (isLive)
            stalemark::Clear(label);
        else
            stalemark::Set(label);
    };
    const values::ValueBase* const online = valueOf(&MCSStatus::GetOnlineValue);
    mark(*m_onlineDisp, {online});
    mark(*m_freqChannelDisp, {online, valueOf(&MCSStatus::GetUsedFreqChannelsValue),
                              valueOf(&MCSStatus::GetFreeFreqChannelsValue)});
    mark(*m_jobTypeDisp, {online, valueOf(&MCSStatus::GetMcsMasterJobControlledValue)});
    mark(*m_numberOfORVsDisp,
         {valueOf(&MCSStatus::GetStaticMpxORVsValue), valueOf(&MCSStatus::GetDynamicMpxORVsValue)});
    mark(*m_sweepTimeDisp,
         {online, valueOf(&MCSStatus::GetOperationModeValue), valueOf(&MCSStatus::GetSweepTimeValue)});
}

/// A value that went away leaves a label without anything to show.
bool MCSStatusDisplay::IsOnline() const {
    return m_status->GetOnlineValue() != nullptr && m_status->IsOnline();
}

void MCSStatusDisplay::UpdateOnlineDisp() {
    if (m_status == nullptr) return;
    QString shown = Placeholder();
    if (m_status->GetOnlineValue() != nullptr) shown = IsOnline() ? tr("Online") : tr("Offline");
    spokenlabel::SetText(*m_onlineDisp, shown);
}

void MCSStatusDisplay::UpdateFreqChannelsDisp() {
    if (m_status == nullptr) return;
    QString shown = Placeholder();
    if (IsOnline() && m_status->GetUsedFreqChannelsValue() != nullptr &&
        m_status->GetFreeFreqChannelsValue() != nullptr) {
        const qint64 used = m_status->GetUsedFreqChannels();  // the sum of the two may need more than an int
        shown = Arg(Arg(tr("%1 of %2 channels used"), used), used + m_status->GetFreeFreqChannels());
    }
    spokenlabel::SetText(*m_freqChannelDisp, shown);
}

void MCSStatusDisplay::UpdateJobTypeDisp() {
    if (m_status == nullptr) return;
    QString shown = Placeholder();
    if (IsOnline() && m_status->GetMcsMasterJobControlledValue() != nullptr)
        shown = m_status->IsMcsMasterJobControlled() ? tr("Master Job") : tr("Generic Job");
    spokenlabel::SetText(*m_jobTypeDisp, shown);
}

/// Shown whether online or not, unlike the channels and the job. (fixed: numbers-offline)
void MCSStatusDisplay::UpdateNumberOfORVsDisplay() {
    if (m_status == nullptr) return;
    QString shown = Placeholder();
    if (m_status->GetStaticMpxORVsValue() != nullptr && m_status->GetDynamicMpxORVsValue() != nullptr)
        shown = Arg(Arg(tr("%1 static and %2 dynamic"), m_status->GetStaticMpxORVs()),
                    m_status->GetDynamicMpxORVs());
    spokenlabel::SetText(*m_numberOfORVsDisp, shown);
}

void MCSStatusDisplay::UpdateSweepTimeDisp() {
    if (m_status != nullptr) spokenlabel::SetText(*m_sweepTimeDisp, GetSweepTimeText());
}

QString MCSStatusDisplay::GetSweepTimeText() const {
    const bool isKnown =
        m_status->GetSweepTimeValue() != nullptr && m_status->GetOperationModeValue() != nullptr;
    const int time = isKnown ? m_status->GetSweepTime() : 0;  // µs
    if (time <= 0 || !IsSweeping(m_status->GetOperationMode()) || !IsOnline())
        return QStringLiteral("- - - ");  // fixed: placeholder-blank
    if (time < FineSweepTime) return WithDecimalPoint(Printed(tr("%.2f ms"), time / 1000.0));
    return Printed(tr("%d ms"), time / 1000 + (time % 1000 != 0 ? 1 : 0));  // rounded up
}

void MCSStatusDisplay::UpdateNoValues() {
    if (m_status == nullptr) return;
    const bool hasNoValue = !IsOnline();
    const QPointer<MCSStatusDisplay> self(this);
    if (m_operationModeNoValue) m_operationModeNoValue->SetValue(hasNoValue, nullptr);
    if (!self.isNull() && m_bootStateNoValue) m_bootStateNoValue->SetValue(hasNoValue, nullptr);
}
