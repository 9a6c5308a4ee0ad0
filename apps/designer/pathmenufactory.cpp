// SPDX-License-Identifier: Apache-2.0
#include <apps/designer/pathmenufactory.h>

#include <apps/designer/boundwidget.h>
#include <apps/designer/pathmenu.h>

#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QExtensionManager>

PathMenuFactory::PathMenuFactory(QExtensionManager* parent) : QExtensionFactory(parent) {}

void PathMenuFactory::Install(QDesignerFormEditorInterface& core) {
    QExtensionManager* const manager = core.extensionManager();
    if (manager == nullptr || manager->findChild<PathMenuFactory*>() != nullptr) return;
    manager->registerExtensions(new PathMenuFactory(manager), Q_TYPEID(QDesignerTaskMenuExtension));
}

QObject* PathMenuFactory::createExtension(QObject* object, const QString& iid, QObject* parent) const {
    if (iid != Q_TYPEID(QDesignerTaskMenuExtension)) return nullptr;
    const BoundWidget* const kind = BoundWidget::Of(object);
    if (kind == nullptr || kind->property == nullptr) return nullptr;
    return new PathMenu(static_cast<QWidget&>(*object), *kind, parent);
}
