// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtDesigner/QExtensionFactory>

class QDesignerFormEditorInterface;

/// Gives the library's widgets in Qt Designer a menu by which a path is chosen.
class PathMenuFactory final : public QExtensionFactory {
    Q_OBJECT

  public:
    /// Once for each \a core, which owns it; calling it again changes nothing.
    static void Install(QDesignerFormEditorInterface& core);

  protected:
    QObject* createExtension(QObject* object, const QString& iid, QObject* parent) const override;

  private:
    explicit PathMenuFactory(QExtensionManager* parent);
};
