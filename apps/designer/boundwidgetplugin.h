// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/designer/boundwidget.h>

#include <QtCore/QObject>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

/// One of the library's widgets, as Qt Designer and loaders of forms ask for it.
class BoundWidgetPlugin final : public QObject, public QDesignerCustomWidgetInterface {
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)

  public:
    /// \a widget outlives it.
    BoundWidgetPlugin(const BoundWidget& widget, QObject* parent);

    QString name() const override;
    QString group() const override;
    QString toolTip() const override;
    QString whatsThis() const override;
    QString includeFile() const override;
    QIcon icon() const override;
    bool isContainer() const override { return false; }
    QWidget* createWidget(QWidget* parent) override;
    bool isInitialized() const override { return m_place == BoundWidget::EPlace::Tool; }
    /// Called by Qt Designer only; a program that loads forms does not.
    void initialize(QDesignerFormEditorInterface* core) override;
    QString domXml() const override { return m_widget.ToXml(); }

  private:
    const BoundWidget& m_widget;
    BoundWidget::EPlace m_place = BoundWidget::EPlace::Program;
};
