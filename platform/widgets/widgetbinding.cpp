// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/widgetbinding.h>

#include <platform/values/valuebase.h>
#include <platform/widgets/hints/lockmark.h>
#include <platform/widgets/hints/spokenname.h>
#include <platform/widgets/hints/staleveil.h>
#include <platform/widgets/hints/valuetip.h>
#include <platform/widgets/ivalueview.h>
#include <platform/widgets/useredit.h>
#include <platform/widgets/valuetext.h>

#include <QtCore/QPointer>
#include <QtCore/QStringList>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QMouseEvent>
#include <QtGui/QTextDocument>
#include <QtWidgets/QWidget>

#include <utility>

namespace {

constexpr int MaxChosenLength = 500;  // characters of a text that others chose

}  // namespace

WidgetBinding::WidgetBinding(QWidget& widget, IValueView& view, PathBinding::Filter filter, EAccess access)
    : m_widget(widget), m_view(view), m_access(access), m_binding(*this, std::move(filter)) {
    WatchPart(widget);
    if (access == ReadOnly) return;
    m_lock = new LockMark(widget);
    values::Refusals::Instance().AddListener(this);
}

WidgetBinding::~WidgetBinding() {
    if (m_access == Editable) values::Refusals::Instance().RemoveListener(this);
}

void WidgetBinding::SetPath(const QString& path) {
    m_isEditing = m_isCommitDue = m_awaitsAnswer = false;
    SetRefusal(QString());
    m_binding.SetPath(path);
    if (m_isOther) RefreshNow();
    if (m_widget.accessibleName() != m_ownSpokenName || spokenname::IsNamedOtherwise(m_widget)) return;
    m_ownSpokenName = path.section(QLatin1Char('/'), -1);
    m_widget.setAccessibleName(m_ownSpokenName);
}

bool WidgetBinding::MayEdit() const {
    return m_access == Editable && !m_isOther && GetState() == EBindingState::Live &&
           GetValue()->IsWritable();
}

void WidgetBinding::RefreshNow() {
    RefreshScheduler::Cancel(*this);
    Refresh();
}

void WidgetBinding::RequestRefresh() {
    RefreshScheduler::Instance().Request(*this);
}

void WidgetBinding::OnBindingChanged(PathBinding&, TChangeCode code) {
    if (code != changecode::ContentChanged) m_isStateShown = false;
    if (code == PathBinding::Rebound) {
        m_isOther = true;
        DropEdit(tr("What was entered was not sent: the value has gone."));
    }
    // Nobody shall take for live what is not, not even until the next refresh.
    if (code == changecode::StateChanged || (m_isOther && GetState() != EBindingState::Live))
        RefreshNow();
    else
        RequestRefresh();
}

void WidgetBinding::Refresh() {
    m_isOther = false;
    m_view.ShowAccess(MayEdit());
    if (!m_isEditing) m_view.ShowValue(GetValue());
    ShowState();
}

void WidgetBinding::WatchPart(QWidget& part) {
    part.installEventFilter(this);
}

void WidgetBinding::CancelEdit() {
    m_isEditing = m_isCommitDue = false;
    RefreshNow();
}

void WidgetBinding::DropEdit(const QString& reason) {
    if (!m_isEditing) return;
    m_isEditing = m_isCommitDue = false;
    if (!m_isCommitting) Refuse(reason);
}

void WidgetBinding::CommitSoon() {
    m_isEditing = m_isCommitDue = true;
    QMetaObject::invokeMethod(this, &WidgetBinding::CommitIfDue, Qt::QueuedConnection);
}

void WidgetBinding::CommitIfDue() {
    if (m_isCommitDue) Commit();
}

void WidgetBinding::Commit() {
    m_isCommitDue = false;
    if (!MayEdit()) {
        m_isEditing = false;
        RefreshNow();
        return RefuseEdit();
    }
    const QPointer<WidgetBinding> self(this);
    m_isEditing = m_isCommitting = m_awaitsAnswer = true;
    SetRefusal(QString());
    const UserEdit edit;
    m_view.Commit(*GetValue());
    if (self == nullptr) return;
    m_isEditing = m_isCommitting = false;
    RefreshNow();
}

void WidgetBinding::EndTyping(bool isConfirmed) {
    if (m_view.EndTyping(isConfirmed))
        CommitSoon();
    else
        CancelEdit();
}

bool WidgetBinding::TakeEditEvent(QEvent& event) {
    if (!m_isEditing) return false;
    const bool isKeyPress = event.type() == QEvent::KeyPress;
    if (isKeyPress || event.type() == QEvent::ShortcutOverride) {
        const int key = static_cast<QKeyEvent&>(event).key();
        if (isKeyPress && (key == Qt::Key_Return || key == Qt::Key_Enter)) EndTyping(true);
        if (key != Qt::Key_Escape) return false;
        if (isKeyPress) CancelEdit();
        event.accept();  // or a dialog around it closes by Escape
        return true;
    }
    // When the focus goes to a menu the edit does not end: the user comes back and types on.
    if (event.type() != QEvent::FocusOut || static_cast<QFocusEvent&>(event).reason() == Qt::PopupFocusReason)
        return false;
    if (m_widget.isEnabled()) {
        EndTyping(false);
    } else {
        DropEdit(tr("What was entered was not sent: the field was locked."));
        RefreshNow();
    }
    return false;
}

void WidgetBinding::RefuseEdit() {
    Refuse(tr("This cannot be changed now."));
}

void WidgetBinding::Refuse(const QString& reason) {
    SetRefusal(valuetext::Shortened(reason, MaxChosenLength));
    ShowState();
    // Later, since the toolkit hides all tips when it has handled the key or click that led here.
    QMetaObject::invokeMethod(this, &WidgetBinding::ShowRefusal, Qt::QueuedConnection);
}

void WidgetBinding::SetRefusal(const QString& reason) {
    if (reason != m_refusal) m_isStateShown = false;
    m_refusal = reason;
}

void WidgetBinding::OnRefused(values::TreeItem* item, const QString&, const QString& reason) {
    if (item == nullptr || item != GetValue()) return;
    const QString shown = valuetext::Reason(reason);
    if (std::exchange(m_awaitsAnswer, false)) return Refuse(shown);
    // Another widget, or code, edited the value: said in the tool tip, but not popped up.
    SetRefusal(valuetext::Shortened(shown, MaxChosenLength));
    ShowState();
}

void WidgetBinding::ShowRefusal() {
    if (!m_refusal.isEmpty() && valuetip::IsInSight(m_widget))
        valuetip::Show(m_widget, valuetip::ToHtml(m_refusal));
}

void WidgetBinding::ShowState() {
    if (m_isStateShown) return;
    m_isStateShown = true;
    const bool isLive = GetState() == EBindingState::Live;
    // Made at once, when nothing is live yet, and kept: a window that is being destroyed takes no new
    // children.
    if (m_veil == nullptr) m_veil = new StaleVeil(m_widget);
    m_veil->setVisible(!isLive);
    if (m_lock != nullptr) m_lock->setVisible(isLive && !MayEdit());
    m_widget.setAccessibleDescription(isLive && m_refusal.isEmpty() ? QString() : DescribeState());
}

QString WidgetBinding::DescribeState() const {
    QString state;
    switch (GetState()) {
        case EBindingState::Unbound:
            state = tr("Not connected");
            break;
        case EBindingState::Waiting:
            state = tr("Not connected: nothing is there");
            break;
        case EBindingState::WrongType:
            state = tr("Not connected: what is there cannot be shown here");
            break;
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
    const QString hidden = m_view.HiddenText();
    if (!hidden.isEmpty()) lines << hidden;
    if (!GetPath().isEmpty()) lines << valuetext::Shortened(GetPath(), MaxChosenLength);
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
        case QEvent::MouseButtonRelease: {
            const auto* const mouse = static_cast<QMouseEvent*>(event);
            if (mouse->button() != Qt::MiddleButton) break;
            const bool isClick = event->type() == QEvent::MouseButtonRelease &&
                                 static_cast<QWidget*>(watched)->rect().contains(mouse->pos());
            if (isClick) CopyPath();
            return true;
        }
        default:
            break;
    }
    return QObject::eventFilter(watched, event);
}

bool WidgetBinding::ShowDescription() {
    if (!m_isDescribed) return false;
    QString own = m_widget.toolTip();
    if (!own.isEmpty())
        own = (Qt::mightBeRichText(own) ? own : valuetip::ToHtml(own)) + QStringLiteral("<br>");
    valuetip::Show(m_widget, own + valuetip::ToHtml(GetDescription()));
    return true;
}

void WidgetBinding::CopyPath() {
    if (GetPath().isEmpty()) return;
    QGuiApplication::clipboard()->setText(GetPath());
    valuetip::Show(m_widget,
                   valuetip::ToHtml(tr("Copied: %1").arg(valuetext::Shortened(GetPath(), MaxChosenLength))));
}
