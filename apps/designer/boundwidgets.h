// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

/// The plugin: all widgets and displays of the library, for Qt Designer and loaders of forms.
class BoundWidgets final : public QObject, public QDesignerCustomWidgetCollectionInterface {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QDesignerCustomWidgetCollectionInterface_iid)
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)

  public:
    explicit BoundWidgets(QObject* parent = nullptr);

    QList<QDesignerCustomWidgetInterface*> customWidgets() const override { return m_widgets; }

  private:
    QList<QDesignerCustomWidgetInterface*> m_widgets;  ///< owned as children
};
