// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/pathbinding.h>
#include <platform/values/refusals.h>
#include <platform/widgets/refreshscheduler.h>
#include <platform/widgets/widgetsexport.h>

#include <QtCore/QObject>
#include <QtCore/QString>

class IValueView;
class LockMark;
class QWidget;
class StaleVeil;

/// What all value-bound widgets share: binding to a path, showing the value at once and then at the rate of
/// RefreshScheduler, staleness at once, access, edits and their refusal, the tool tip, copying the path by a
/// middle click, and a name for assistive technology. A member of its widget, which it does not own. GUI
/// thread only.
///
/// A widget may be edited while its value is live and writable. One that may not be edited stays enabled:
/// enabling belongs to the display that the widget is part of.
///
/// What the user enters is meant for the value that was shown. It is dropped, and the user is told, if
/// another value or none comes to the path before it is committed.
class MCS_WIDGETS_EXPORT WidgetBinding : public QObject,
                                         private PathBinding::IListener,
                                         private values::IRefusalListener,
                                         private RefreshScheduler::Client {
    Q_OBJECT

  public:
    enum EAccess { ReadOnly, Editable };

    /// \a widget shows the values that pass \a filter through \a view, which is usually itself.
    WidgetBinding(QWidget& widget, IValueView& view, PathBinding::Filter filter, EAccess access);
    ~WidgetBinding() override;

    /// Binds to \a path and shows what is there; empty: to nothing. An edit under way is dropped.
    void SetPath(const QString& path);
    QString GetPath() const { return m_binding.GetPath(); }
    EBindingState GetState() const { return m_binding.GetState(); }  ///< of what is at the path
    /// Null unless the state is Stale or Live.
    values::ValueBase* GetValue() const { return m_binding.GetValue(); }
    bool MayEdit() const;  ///< Whether the user may: the value is live and writable, and this is an editor.

    /// Shows what holds, now.
    void RefreshNow();
    /// Shows what holds, at the rate of all.
    void RequestRefresh();

    /// The user enters something: contents that come wait.
    void BeginEdit() { m_isEditing = true; }
    bool IsEditing() const { return m_isEditing; }  ///< what is shown is being edited
    /// Shows the value again instead of what was entered.
    void CancelEdit();
    /// Has the view commit what the user entered, if it may still be. The widget may be destroyed meanwhile.
    void Commit();
    /// The same, when CommitIfDue() is called, at the latest in the next turn of the event loop: for edits
    /// that are made while the widget is busy, and must not be destroyed.
    void CommitSoon();
    void CommitIfDue();  ///< Commits if CommitSoon() was called, and nothing did since.
    /// What keys and focus mean while something is typed; comes first in the widget's event(), and
    /// CommitIfDue() last. True if that is all there is to do.
    bool TakeEditEvent(QEvent& event);
    /// Tells the user why an edit did not happen, at the widget and in its tool tip until the next edit.
    void Refuse(const QString& reason);
    /// For an edit that cannot be made now.
    void RefuseEdit();

    /// Whether the tool tip tells of the value; true unless set.
    void SetDescribed(bool isDescribed) { m_isDescribed = isDescribed; }
    bool IsDescribed() const { return m_isDescribed; }
    /// Path, state, limits and access of the value, a line each, in plain text.
    QString GetDescription() const;
    /// Also watches \a part of the widget for tool tips and clicks.
    void WatchPart(QWidget& part);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void OnBindingChanged(PathBinding& binding, TChangeCode code) override;
    void OnRefused(values::TreeItem* item, const QString& path, const QString& reason) override;
    void Refresh() override;
    void EndTyping(bool isConfirmed);
    void DropEdit(const QString& reason);
    void SetRefusal(const QString& reason);
    void ShowState();
    void ShowRefusal();
    bool ShowDescription();
    void CopyPath();
    QString DescribeState() const;

    QWidget& m_widget;
    IValueView& m_view;
    EAccess m_access;
    PathBinding m_binding;
    StaleVeil* m_veil = nullptr;  ///< owned by the widget; visible while the content is not live
    LockMark* m_lock =
        nullptr;  ///< owned by the widget, none if it is no editor; visible while that is locked
    QString m_refusal;
    QString m_ownSpokenName;  ///< what this binding called the widget
    bool m_isDescribed = true;
    bool m_isOther = true;        ///< another value than the one that is shown
    bool m_isStateShown = false;  ///< the state that is shown is the state that holds
    bool m_isEditing = false;     ///< what is shown is what the user entered
    bool m_isCommitDue = false;
    bool m_isCommitting = false;
    bool m_awaitsAnswer = false;  ///< the last edit may still be refused
};
