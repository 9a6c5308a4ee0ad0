// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QTranslator>

class QDesignerFormEditorInterface;

/// What the plugin says, and the library's widgets on a form, in the language of Qt Designer. The plugin
/// brings the catalogues itself: Qt Designer knows nothing of the folder where those of the programs are, and
/// a program that loads forms says by itself in which language its widgets speak.
class PluginTexts final : public QObject {
    Q_OBJECT

  public:
    /// Once for each \a core, which owns it; calling it again changes nothing.
    static void Install(QDesignerFormEditorInterface& core);

  private:
    explicit PluginTexts(QObject* core);
    static void Load(QTranslator& texts, const QString& name);

    QTranslator m_plugin;
    QTranslator m_library;
};
