// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QPointer>
#include <QtDesigner/QDesignerTaskMenuExtension>
#include <QtWidgets/QWidget>

struct BoundWidget;

/// What Qt Designer's menu of a widget offers beside its own entries; a double click on the widget does the
/// same. GUI thread only.
class PathMenu final : public QObject, public QDesignerTaskMenuExtension {
    Q_OBJECT
    Q_INTERFACES(QDesignerTaskMenuExtension)

  public:
    /// \a kind outlives it.
    PathMenu(QWidget& widget, const BoundWidget& kind, QObject* parent);

    QAction* preferredEditAction() const override { return m_choose; }
    QList<QAction*> taskActions() const override { return {m_choose}; }

  private:
    void Choose();
    void Take(const QString& path, unsigned content);

    QPointer<QWidget> m_widget;
    const BoundWidget& m_kind;
    QAction* m_choose;
};
