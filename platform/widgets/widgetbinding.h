// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/refusals.h>
#include <platform/widgets/pathbinding.h>
#include <platform/widgets/refreshscheduler.h>
#include <platform/widgets/widgetsexport.h>

#include <QtCore/QObject>
#include <QtCore/QString>

class IValueView;
class QWidget;
class StaleVeil;

/// What all value-bound widgets share: binding to a path, showing the value at once and then at the rate of
/// RefreshScheduler, staleness, access, refused edits, the tool tip, copying the path by a middle click, and
/// a name for assistive technology. A member of its widget, which it does not own. GUI thread only.
///
/// A widget may be edited while its value is live and writable. One that may not be edited stays enabled:
/// enabling belongs to the display that the widget is part of.
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

    /// Binds to \a path and shows what is there; empty: to nothing.
    void SetPath(const QString& path);
    QString GetPath() const { return m_binding.GetPath(); }
    EBindingState GetState() const { return m_binding.GetState(); }
    /// Null unless the state is Stale or Live.
    values::ValueBase* GetValue() const { return m_binding.GetValue(); }
    /// The same as \a V, which the filter has made sure of.
    template <class V>
    V* GetValueAs() const {
        return static_cast<V*>(m_binding.GetValue());
    }
    bool MayEdit() const;

    /// Shows what holds, now.
    void RefreshNow();
    /// Shows what holds, at the rate of all.
    void RequestRefresh();
    /// Tells the user why an edit did not happen, at the widget and in its tool tip until the next edit.
    void Refuse(const QString& reason);
    /// An edit went out: what was refused before is past.
    void ForgetRefusal() { m_refusal.clear(); }

    /// Whether the tool tip tells of the value; true unless set.
    void SetDescribed(bool isDescribed) { m_isDescribed = isDescribed; }
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
    void ShowState();
    void ShowTip(const QString& plainText);
    bool ShowDescription();
    void CopyPath();
    QString DescribeState() const;

    QWidget& m_widget;
    IValueView& m_view;
    EAccess m_access;
    PathBinding m_binding;
    StaleVeil* m_veil;  ///< visible while the content is not live; of the widget, from the beginning, since a
                        ///< window that goes away takes no new children
    QString m_refusal;
    QString m_ownAccessibleName;  ///< what this binding called the widget
    bool m_isDescribed = true;
};
