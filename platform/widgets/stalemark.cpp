// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/stalemark.h>

#include <platform/widgets/hints/staleveil.h>
#include <platform/widgets/widgetbinding.h>

namespace {

StaleVeil* FindVeil(const QWidget& widget) {
    for (QObject* const child : widget.children()) {
        if (auto* const veil = dynamic_cast<StaleVeil*>(child)) return veil;
    }
    return nullptr;
}

void Describe(QWidget& widget, const QString& description) {
    widget.setToolTip(description);
    widget.setAccessibleDescription(description);
}

}  // namespace

void stalemark::Set(QWidget& widget) {
    StaleVeil* const veil = FindVeil(widget);
    if (veil == nullptr)
        new StaleVeil(widget);  // which the widget owns
    else
        veil->show();
    Describe(widget, WidgetBinding::tr("Not connected"));
}

void stalemark::Clear(QWidget& widget) {
    StaleVeil* const veil = FindVeil(widget);
    if (veil == nullptr) return;
    veil->hide();  // and stays: a window that goes away takes no new children
    Describe(widget, QString());
}
