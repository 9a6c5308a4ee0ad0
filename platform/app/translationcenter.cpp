// SPDX-License-Identifier: Apache-2.0
#include <platform/app/translationcenter.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTranslator>

TranslationCenter::TranslationCenter() = default;
TranslationCenter::~TranslationCenter() = default;

TranslationCenter& TranslationCenter::Instance() {
    static auto& center = *new TranslationCenter;  // never destroyed: modules that go later still unregister
    return center;
}

bool TranslationCenter::Register(const QString& name) {
    Catalogue& catalogue = m_catalogues[name];
    ++catalogue.registrations;
    if (!catalogue.translator && QCoreApplication::instance() != nullptr) {
        catalogue.translator = Load(name);
        if (catalogue.translator) QCoreApplication::installTranslator(catalogue.translator.get());
    }
    return catalogue.translator != nullptr;
}

void TranslationCenter::Unregister(const QString& name) {
    const auto found = m_catalogues.find(name);
    if (found == m_catalogues.end() || --found->second.registrations > 0) return;
    m_catalogues.erase(found);  // a translator takes itself out of the application
}

std::unique_ptr<QTranslator> TranslationCenter::Load(const QString& name) const {
    QStringList directories = m_directories;
    const QString program = QCoreApplication::applicationDirPath();
    directories << program + QStringLiteral("/translations")
                << program + QStringLiteral("/../share/MultiChannelServer/translations");
    for (const QString& directory : qAsConst(directories)) {
        auto translator = std::make_unique<QTranslator>();
        if (translator->load(m_locale.value_or(QLocale()), name, QStringLiteral("_"), directory))
            return translator;
    }
    return nullptr;
}
