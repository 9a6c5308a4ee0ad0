// SPDX-License-Identifier: Apache-2.0
#include <apps/designer/boundwidgets.h>

#include <apps/designer/boundwidgetplugin.h>

BoundWidgets::BoundWidgets(QObject* parent) : QObject(parent) {
    for (const BoundWidget& widget : BoundWidget::All())
        m_widgets << new BoundWidgetPlugin(widget, this);
}
