// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/vclabel.h>

#include <platform/values/visit.h>
#include <platform/widgets/valuetext.h>

namespace {

constexpr int MaxLabelLength = 500;  // characters: more would not fit any screen

bool IsAnyValue(const values::ValueBase&) {
    return true;
}

}  // namespace

VCLabel::VCLabel(QWidget* parent, const char* name, unsigned windowFlags)
    : SteadyLabel(parent, Qt::WindowFlags(static_cast<int>(windowFlags))),
      m_binding(*this, *this, IsAnyValue, WidgetBinding::ReadOnly),
      m_noValue(*this, values::Is<values::Value<bool>>),
      m_alignment(alignment()),
      m_alignmentNoValue(Qt::AlignCenter) {
    if (name != nullptr) setObjectName(QString::fromUtf8(name));
    m_binding.RefreshNow();
}

VCLabel::~VCLabel() = default;

void VCLabel::SetText_ValuePath(const QString& path, bool isDescribed) {
    m_binding.SetDescribed(isDescribed);
    m_binding.SetPath(path);
}

void VCLabel::SetNoValue_ValuePath(const QString& path) {
    m_noValue.SetPath(path);
    m_binding.RefreshNow();
}

void VCLabel::SetAlignmentNoValue(int alignment) {
    m_alignmentNoValue = Qt::Alignment(alignment);
    m_binding.RefreshNow();
}

QString VCLabel::HiddenText() const {
    return Fits() ? QString() : text();
}

bool VCLabel::HasNoValue() const {
    const auto* const flag = static_cast<const values::Value<bool>*>(m_noValue.GetValue());
    return flag != nullptr && flag->GetValue();
}

void VCLabel::ShowValue(const values::ValueBase* value) {
    const bool showsNoValue = value != nullptr && HasNoValue();
    if (showsNoValue != m_showsNoValue) {
        if (showsNoValue) m_alignment = alignment();
        m_showsNoValue = showsNoValue;
        if (!showsNoValue) setAlignment(m_alignment);
    }
    if (showsNoValue && alignment() != m_alignmentNoValue) setAlignment(m_alignmentNoValue);
    QString shown;
    if (showsNoValue)
        shown = QStringLiteral("- - -");
    else if (value != nullptr)
        shown = valuetext::Shortened(valuetext::Content(*value), MaxLabelLength);
    ShowText(shown);
}

// The value that hides the content is shown at once, not with the next refresh: it changes rarely, and an
// operator would believe "Ready" beside "Offline".
void VCLabel::OnBindingChanged(PathBinding&, TChangeCode) {
    m_binding.RefreshNow();
}
