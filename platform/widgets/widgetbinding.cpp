// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/widgetbinding.h>

#include <platform/values/valuebase.h>
#include <platform/widgets/ivalueview.h>
#include <platform/widgets/staleveil.h>
#include <platform/widgets/valuetext.h>

#include <QtCore/QStringList>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QHelpEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QToolTip>
#include <QtWidgets/QWidget>

#include <utility>

namespace {

constexpr int MaxTipLength = 500;  // characters of a text that others chose

}  // namespace

WidgetBinding::WidgetBinding(QWidget& widget, IValueView& view, PathBinding::Filter filter, EAccess access)
    : m_widget(widget),
      m_view(view),
      m_access(access),
      m_binding(*this, std::move(filter)),
      m_veil(new StaleVeil(widget)) {
    WatchPart(widget);
    if (access == Editable) values::Refusals::Instance().AddListener(this);
}

WidgetBinding::~WidgetBinding() {
    if (m_access == Editable) values::Refusals::Instance().RemoveListener(this);
}

void WidgetBinding::SetPath(const QString& path) {
    m_refusal.clear();
    m_binding.SetPath(path);
    RefreshNow();
}

bool WidgetBinding::MayEdit() const {
    return m_access == Editable && GetState() == EBindingState::Live && GetValue()->IsWritable();
}

void WidgetBinding::RefreshNow() {
    RefreshScheduler::Instance().Cancel(*this);
    Refresh();
}

void WidgetBinding::RequestRefresh() {
    RefreshScheduler::Instance().Request(*this);
}

void WidgetBinding::Refuse(const QString& reason) {
    m_refusal = valuetext::Shortened(reason, MaxTipLength);
    ShowState();
    if (m_widget.isVisible()) ShowTip(m_refusal);
}

void WidgetBinding::WatchPart(QWidget& part) {
    part.installEventFilter(this);
}

void WidgetBinding::OnBindingChanged(PathBinding&, TChangeCode) {
    RequestRefresh();
}

void WidgetBinding::OnRefused(values::TreeItem* item, const QString&, const QString& reason) {
    if (item != nullptr && item == GetValue()) Refuse(reason);
}

void WidgetBinding::Refresh() {
    m_view.ShowAccess(MayEdit());
    m_view.ShowValue(GetValue());
    ShowState();
}

void WidgetBinding::ShowState() {
    const bool isLive = GetState() == EBindingState::Live;
    m_veil->setVisible(!isLive);
    // Only where nobody else gave the widget a name.
    if (m_widget.accessibleName() == m_ownAccessibleName) {
        m_ownAccessibleName = GetPath().section(QLatin1Char('/'), -1);
        if (m_widget.accessibleName() != m_ownAccessibleName) m_widget.setAccessibleName(m_ownAccessibleName);
    }
    const QString state = isLive && m_refusal.isEmpty() ? QString() : DescribeState();
    if (m_widget.accessibleDescription() != state) m_widget.setAccessibleDescription(state);
}

QString WidgetBinding::DescribeState() const {
    QString state;
    switch (GetState()) {
        case EBindingState::Unbound:
            return tr("Not connected");
        case EBindingState::Waiting:
            return tr("Not connected: nothing is there");
        case EBindingState::WrongType:
            return tr("Not connected: what is there cannot be shown here");
        case EBindingState::Stale:
            state = tr("Not connected: this is the last content known");
            break;
        case EBindingState::Live:
            state = tr("Connected");
            break;
    }
    return m_refusal.isEmpty() ? state : state + QLatin1Char('\n') + tr("Refused: %1").arg(m_refusal);
}

QString WidgetBinding::GetDescription() const {
    QStringList lines;
    if (!GetPath().isEmpty()) lines << valuetext::Shortened(GetPath(), MaxTipLength);
    lines << DescribeState();
    const values::ValueBase* const value = GetValue();
    if (value == nullptr) return lines.join(QLatin1Char('\n'));
    const QString limits = valuetext::Limits(*value);
    if (!limits.isEmpty()) lines << tr("Limits: %1").arg(limits);
    if (m_access == Editable && !value->IsWritable()) lines << tr("May not be changed from here");
    return lines.join(QLatin1Char('\n'));
}

bool WidgetBinding::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::ToolTip:
            return ShowDescription();
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseButtonRelease:
            if (static_cast<QMouseEvent*>(event)->button() != Qt::MiddleButton) break;
            if (event->type() == QEvent::MouseButtonRelease) CopyPath();
            return true;
        default:
            break;
    }
    return QObject::eventFilter(watched, event);
}

bool WidgetBinding::ShowDescription() {
    if (!m_isDescribed) return false;
    const QString own = m_widget.toolTip();
    ShowTip(own.isEmpty() ? GetDescription() : own + QLatin1Char('\n') + GetDescription());
    return true;
}

/// Texts of peers must not become markup.
void WidgetBinding::ShowTip(const QString& plainText) {
    QString html = plainText.toHtmlEscaped();
    html.replace(QLatin1Char('\n'), QStringLiteral("<br>"));
    QToolTip::showText(m_widget.mapToGlobal(QPoint(0, m_widget.height())),
                       QStringLiteral("<qt>%1</qt>").arg(html), &m_widget);
}

void WidgetBinding::CopyPath() {
    if (GetPath().isEmpty()) return;
    QGuiApplication::clipboard()->setText(GetPath());
    ShowTip(tr("Copied: %1").arg(valuetext::Shortened(GetPath(), MaxTipLength)));
}
