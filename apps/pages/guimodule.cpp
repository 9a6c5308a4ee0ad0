// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/guimodule.h>

#include <devicecontrol/multichannelserver/common/moduleentry.h>

#include <platform/app/idllinstance.h>
#include <platform/app/translationcenter.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLibraryInfo>
#include <QtCore/QLocale>
#include <QtCore/QTranslator>

namespace {

/// The texts of the windows of the programs; those of the library are the library's.
QString CatalogueName() {
    return QStringLiteral("MultiChannelServerApps");
}

}  // namespace

GuiModule::GuiModule(const QString& locale) {
    if (!locale.isEmpty()) QLocale::setDefault(QLocale(locale));
    InstallQtTexts();
    TranslationCenter::Instance().Register(CatalogueName());
    m_module = ARCreateEx(QCoreApplication::applicationName().toStdWString().c_str());
}

GuiModule::~GuiModule() {
    ARDestroy(m_module);
    TranslationCenter::Instance().Unregister(CatalogueName());
}

void GuiModule::CommitData() const {
    if (m_module != nullptr) m_module->CommitData();
}

void GuiModule::InstallQtTexts() {
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(QLocale(), QStringLiteral("qtbase"), QStringLiteral("_"),
                          QLibraryInfo::location(QLibraryInfo::TranslationsPath)))
        return;
    m_qtTexts = std::move(translator);
    QCoreApplication::installTranslator(m_qtTexts.get());
}
