// SPDX-License-Identifier: Apache-2.0
#include <apps/designer/plugintexts.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>
#include <QtDesigner/QDesignerFormEditorInterface>

PluginTexts::PluginTexts(QObject* core) : QObject(core) {
    Load(m_library, QStringLiteral("MultiChannelServerCommon"));
    Load(m_plugin, QStringLiteral("MultiChannelServerDesigner"));
}

void PluginTexts::Install(QDesignerFormEditorInterface& core) {
    if (core.findChild<PluginTexts*>() == nullptr) new PluginTexts(&core);
}

void PluginTexts::Load(QTranslator& texts, const QString& name) {
    const QString folder = QStringLiteral(":/multichannelserver/designer");
    if (texts.load(QLocale(), name, QStringLiteral("_"), folder)) QCoreApplication::installTranslator(&texts);
}
