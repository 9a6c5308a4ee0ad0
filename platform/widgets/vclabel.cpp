// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/vclabel.h>

#include <platform/values/value.h>
#include <platform/widgets/spokenlabel.h>
#include <platform/widgets/valuetext.h>

#include <QtGui/QPainter>
#include <QtWidgets/QStyle>

namespace {

constexpr int MaxShownLength = 500;   // characters: more would not fit any screen
constexpr int MaxWidth = 600;         // pixels: a long text must not push the others aside
constexpr int MaxMinimumWidth = 200;  // pixels: nor hold a window open

bool IsAnyValue(const values::ValueBase&) {
    return true;
}

bool IsBoolean(const values::ValueBase& value) {
    return dynamic_cast<const values::Value<bool>*>(&value) != nullptr;
}

}  // namespace

VCLabel::VCLabel(QWidget* parent, const char* name, unsigned windowFlags)
    : QLabel(parent, Qt::WindowFlags(static_cast<int>(windowFlags))),
      m_binding(*this, *this, IsAnyValue, WidgetBinding::ReadOnly),
      m_noValue(*this, IsBoolean),
      m_alignment(alignment()),
      m_alignmentNoValue(Qt::AlignCenter) {
    if (name != nullptr) setObjectName(QString::fromUtf8(name));
    setTextFormat(Qt::PlainText);
    spokenlabel::Install(*this);
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

QSize VCLabel::sizeHint() const {
    return QLabel::sizeHint().boundedTo(QSize(MaxWidth, QWIDGETSIZE_MAX));
}

QSize VCLabel::minimumSizeHint() const {
    return QLabel::minimumSizeHint().boundedTo(QSize(MaxMinimumWidth, QWIDGETSIZE_MAX));
}

bool VCLabel::Fits() const {
    return QLabel::sizeHint().width() <= width();
}

/// A number of which the end is cut off would be read as another number.
void VCLabel::paintEvent(QPaintEvent* event) {
    if (Fits()) return QLabel::paintEvent(event);
    QPainter painter(this);
    drawFrame(&painter);
    const QRect room = contentsRect().marginsRemoved(QMargins(margin(), margin(), margin(), margin()));
    const int flags = QStyle::visualAlignment(layoutDirection(), alignment()) | Qt::TextSingleLine;
    style()->drawItemText(&painter, room, flags, palette(), isEnabled(),
                          fontMetrics().elidedText(text(), Qt::ElideRight, room.width()), foregroundRole());
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
        shown = valuetext::Shortened(valuetext::Content(*value), MaxShownLength);
    spokenlabel::SetText(*this, shown);
}

void VCLabel::OnBindingChanged(PathBinding&, TChangeCode) {
    m_binding.RequestRefresh();
}
