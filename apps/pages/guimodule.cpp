// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/guimodule.h>

#include <apps/pages/qttexts.h>

#include <devicecontrol/multichannelserver/common/moduleentry.h>

#include <platform/app/idllinstance.h>
#include <platform/app/translationcenter.h>
#include <platform/widgets/valuetext.h>

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
    // Digits are not grouped: what groups them in one language is the decimal point of another, and
    // frequencies are typed with either.
    QLocale numbers = locale.isEmpty() ? QLocale() : QLocale(locale);
    numbers.setNumberOptions(numbers.numberOptions() | QLocale::OmitGroupSeparator);
    QLocale::setDefault(numbers);
    InstallQtTexts();
    TranslationCenter::Instance().Register(CatalogueName());
    valuetext::SetTranslation(&m_contents);
    m_module = ARCreateEx(QCoreApplication::applicationName().toStdWString().c_str());
}

GuiModule::~GuiModule() {
    ARDestroy(m_module);
    valuetext::SetTranslation(nullptr);
    TranslationCenter::Instance().Unregister(CatalogueName());
}

void GuiModule::CommitData() const {
    if (m_module != nullptr) m_module->CommitData();
}

void GuiModule::InstallQtTexts() {
    auto translator = std::make_unique<QTranslator>();
    const bool isThere = translator->load(QLocale(), QStringLiteral("qtbase"), QStringLiteral("_"),
                                          QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    if (!isThere) translator = std::make_unique<QtTexts>();
    m_qtTexts = std::move(translator);
    QCoreApplication::installTranslator(m_qtTexts.get());
}
