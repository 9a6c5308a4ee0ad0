// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/configpage.h>

#include <apps/common/whotext.h>
#include <apps/pages/agetext.h>
#include <apps/pages/changemark.h>
#include <apps/pages/serverkeys.h>

#include <devicecontrol/multichannelserver/common/mcsconfigdisplay.h>

#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/values/valuenumeric.h>
#include <platform/widgets/useredit.h>
#include <platform/widgets/valuetext.h>
#include <platform/widgets/vclineedit.h>
#include <platform/widgets/vcnumericfloatspin.h>
#include <platform/widgets/vcpushbutton.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include <vector>

namespace {

constexpr int MaxShownLength = 60;

struct ConfigField {
    QLatin1String key;
    const char* widget;  ///< in the display
    const char* caption;
};

// Those that save themselves have nothing to be marked.
const ConfigField ConfigFields[] = {
    {mcskeys::DeviceName, "deviceNameDisp", QT_TRANSLATE_NOOP("ConfigPage", "DF Station Name")},
    {mcskeys::DeviceAddress, "deviceAdressDisp", QT_TRANSLATE_NOOP("ConfigPage", "DF Address")},
    {mcskeys::ConnectOnStartup, "connectOnStartUpDisp",
     QT_TRANSLATE_NOOP("ConfigPage", "Connect on startup")},
    {mcskeys::ForceConnect, "forceConnectDisp", QT_TRANSLATE_NOOP("ConfigPage", "Force connection")},
    {mcskeys::NumberOfFreqChannels, "numberOfFreqChannelDisp",
     QT_TRANSLATE_NOOP("ConfigPage", "Number of Frequency Channels")},
};

bool AnyValue(const values::ValueBase& /*value*/) {
    return true;
}

/// A text, a switch or a number; invalid where there is none of these.
QVariant ContentOf(const values::ValueBase* value) {
    if (const auto* const text = dynamic_cast<const values::Value<QString>*>(value)) return text->GetValue();
    if (const auto* const flag = dynamic_cast<const values::Value<bool>*>(value)) return flag->GetValue();
    if (const auto* const number = dynamic_cast<const values::Value<int>*>(value)) return number->GetValue();
    if (const auto* const number = dynamic_cast<const values::ValueNumeric<int>*>(value))
        return number->GetValue();
    return QVariant();
}

QString TextOf(const QVariant& content) {
    if (content.type() != QVariant::Bool) return content.toString();
    return content.toBool() ? ConfigPage::tr("on") : ConfigPage::tr("off");
}

/// Leaves alone what holds another kind of content.
void Put(values::ValueBase* value, const QVariant& content) {
    const QVariant::Type type = content.type();
    if (auto* const to = dynamic_cast<values::Value<QString>*>(value);
        to != nullptr && type == QVariant::String)
        to->SetValue(content.toString());
    if (auto* const to = dynamic_cast<values::Value<bool>*>(value); to != nullptr && type == QVariant::Bool)
        to->SetValue(content.toBool());
    if (auto* const to = dynamic_cast<values::ValueNumeric<int>*>(value);
        to != nullptr && type == QVariant::Int)
        to->SetValue(content.toInt());
}

QLabel* WrappedLabel(QWidget* parent, const char* name) {
    auto* const label = new QLabel(parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumWidth(1);
    return label;
}

}  // namespace

bool ConfigPage::Field::IsKnown() const {
    return current->GetValue() != nullptr && saved->GetValue() != nullptr;
}

bool ConfigPage::Field::IsChanged() const {
    return IsKnown() && GetContent() != ContentOf(saved->GetValue());
}

QVariant ConfigPage::Field::GetContent() const {
    const auto* const text = qobject_cast<const VCLineEdit*>(widget);
    if (text != nullptr && text->GetBinding().IsEditing()) return text->text();
    const auto* const number = qobject_cast<const VCNumericFloatSpin*>(widget);
    if (number != nullptr && number->GetBinding().IsEditing())
        return static_cast<int>(number->valueFromText(number->text()));
    return ContentOf(current->GetValue());
}

ConfigPage::ConfigPage(QWidget* parent)
    : Page(parent),
      m_display(new MCSConfigDisplay(static_cast<MCSConfigDisplay::Flags>(MCSConfigDisplay::BootConfigGroup |
                                                                          MCSConfigDisplay::JobConfigGroup),
                                     this, nullptr, Qt::WindowFlags())),
      m_changes(WrappedLabel(this, "NotSaved")),
      m_when(WrappedLabel(this, "SavedWhen")),
      m_save(new VCPushButton(this, "SaveConfigButton")),
      m_revert(new QPushButton(tr("&Revert to what was saved"), this)),
      m_since(*this, AnyValue),
      m_by(*this, AnyValue) {
    auto* const note = WrappedLabel(this, "TakesEffect");
    note->setText(
        tr("Name, address and forcing take effect with the next connection to the device; the averaging time "
           "is saved by itself."));
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(m_display);
    layout->addWidget(note);
    layout->addWidget(m_changes);
    layout->addWidget(BuildButtons());
    layout->addStretch();
    AddFields();
    m_look.setSingleShot(true);
    connect(&m_look, &QTimer::timeout, this, &ConfigPage::ShowChanges);
    ShowChanges();
}

ConfigPage::~ConfigPage() = default;

QWidget* ConfigPage::BuildButtons() {
    auto* const bar = new QWidget(this);
    m_save->setText(tr("Save &configuration"));
    m_save->setAccessibleName(tr("Save configuration"));
    m_revert->setObjectName(QStringLiteral("RevertConfigButton"));
    m_revert->setAccessibleName(tr("Revert to what was saved"));
    connect(m_revert, &QPushButton::clicked, this, &ConfigPage::Revert);
    connect(m_save, &QPushButton::pressed, this, &ConfigPage::EndTyping);
    auto* const row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_when, 1);
    row->addWidget(m_revert);
    row->addWidget(m_save);
    return bar;
}

void ConfigPage::AddFields() {
    for (const ConfigField& field : ConfigFields) {
        auto* const widget = m_display->findChild<QWidget*>(QString::fromLatin1(field.widget));
        widget->installEventFilter(this);
        m_fields.push_back(
            {tr(field.caption), widget, new ChangeMark(*widget),
             std::make_unique<PathBinding>(static_cast<PathBinding::IListener&>(*this), AnyValue),
             std::make_unique<PathBinding>(static_cast<PathBinding::IListener&>(*this), AnyValue)});
    }
}

void ConfigPage::Bind(const QString& basePath, EMCSControlTreeSegments segments) {
    const QString path = SegmentPath(basePath, segments, ConfigSegment);
    const QString saved = Below(SegmentPath(basePath, segments, StatusSegment), serverkeys::SavedConfig);
    m_isBinding = true;
    m_display->SetConfig_ValuePath(path);
    m_save->Set_ValuePath(Below(path, mcskeys::SaveConfig));
    for (std::size_t i = 0; i < m_fields.size(); ++i) {
        m_fields[i].current->SetPath(Below(path, ConfigFields[i].key));
        m_fields[i].saved->SetPath(Below(saved, ConfigFields[i].key));
    }
    m_since.SetPath(Below(saved, serverkeys::SavedSince));
    m_by.SetPath(Below(saved, serverkeys::SavedBy));
    m_isBinding = false;
    ShowChanges();
}

void ConfigPage::OnBindingChanged(PathBinding& /*binding*/, TChangeCode /*code*/) {
    if (!m_isBinding) ShowChanges();
}

/// What is typed has not left the field, and nobody tells of it.
bool ConfigPage::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    const bool mayType = type == QEvent::KeyPress || type == QEvent::InputMethod ||
                         type == QEvent::FocusOut || type == QEvent::Drop ||
                         type == QEvent::MouseButtonRelease;
    if (mayType) m_look.start();
    return Page::eventFilter(watched, event);
}

/// A key presses the button though somebody still types: that is meant to be saved too.
void ConfigPage::EndTyping() {
    m_save->setFocus();
}

void ConfigPage::DropTyping() {
    for (const Field& field : m_fields) {
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        const bool isField = qobject_cast<QAbstractButton*>(field.widget) == nullptr;
        if (isField && field.GetContent() != ContentOf(field.current->GetValue()))
            QCoreApplication::sendEvent(field.widget, &escape);
    }
}

void ConfigPage::ShowChanges() {
    QStringList changes;
    bool isKnown = false;
    for (const Field& field : m_fields) {
        isKnown = isKnown || field.IsKnown();
        field.mark->setVisible(field.IsChanged());
        if (!field.IsChanged()) continue;
        const QString saved =
            valuetext::Shortened(TextOf(ContentOf(field.saved->GetValue())), MaxShownLength);
        changes += tr("%1 (saved: \"%2\")").arg(field.caption, saved);
    }
    m_changes->setText(changes.isEmpty() ? QString()
                                         : tr("Not saved: %1").arg(changes.join(QStringLiteral(", "))));
    m_when->setText(isKnown ? SavedText() : QString());
    m_revert->setVisible(isKnown);
    m_revert->setEnabled(!changes.isEmpty());
    m_save->setEnabled(!isKnown || !changes.isEmpty());
}

QString ConfigPage::SavedText() const {
    const QString since = TextOf(ContentOf(m_since.GetValue()));
    const QString by =
        valuetext::Shortened(whotext::Translated(TextOf(ContentOf(m_by.GetValue()))), MaxShownLength);
    if (since.isEmpty()) return tr("Not saved since the server began");
    const QString moment = agetext::Moment(since);
    return by.isEmpty() ? tr("Saved at the server, %1").arg(moment) : tr("Saved by %1, %2").arg(by, moment);
}

/// Also what somebody else has entered and not saved: so it can be had back.
void ConfigPage::Revert() {
    DropTyping();
    QStringList captions;
    struct Reverted {
        QString path;
        QVariant before;
        QVariant after;
    };
    std::vector<Reverted> reverted;
    const UserEdit edit;
    for (const Field& field : m_fields) {
        if (!field.IsChanged()) continue;
        captions += field.caption;
        const QVariant saved = ContentOf(field.saved->GetValue());
        reverted.push_back({field.current->GetPath(), ContentOf(field.current->GetValue()), saved});
        Put(field.current->GetValue(), saved);
    }
    ShowChanges();
    if (reverted.empty()) return;  // it was only typed
    Q_EMIT Acted(tr("Reverted to what was saved: %1.").arg(captions.join(QStringLiteral(", "))), [reverted] {
        for (const Reverted& field : reverted) {
            auto* const value =
                dynamic_cast<values::ValueBase*>(values::Tree::Instance()->FindItem(field.path));
            // What somebody has entered since stays.
            if (ContentOf(value) == field.after) Put(value, field.before);
        }
    });
}
