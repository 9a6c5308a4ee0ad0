// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/platformexport.h>

#include <QtCore/QLocale>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <map>
#include <memory>
#include <optional>

class QTranslator;

/// Installs translation catalogues by name. GUI thread only.
///
/// Registering "Name" loads "Name_<locale>.qm" (German in Austria: "Name_de_AT.qm", else "Name_de.qm") from
/// the first search directory that has it. Registrations are counted: a catalogue leaves with its last one.
class MCS_PLATFORM_EXPORT TranslationCenter {
  public:
    static TranslationCenter& Instance();  ///< the one of the process
    TranslationCenter(const TranslationCenter&) = delete;
    TranslationCenter& operator=(const TranslationCenter&) = delete;

    /// \return whether a catalogue for the current locale is installed. Without one, and without an
    /// application object, the registration still counts and texts stay as they are in the code.
    bool Register(const QString& name);
    void Unregister(const QString& name);  ///< One registration less; of a name that has none, nothing.

    /// Directories that are looked through before those of the application: "translations" beside it, and
    /// "../share/MultiChannelServer/translations" where it is installed.
    void SetSearchDirectories(const QStringList& directories) { m_directories = directories; }
    /// Locale of catalogues registered from now on; QLocale() unless set.
    void SetLocale(const QLocale& locale) { m_locale = locale; }

  private:
    struct Catalogue {
        int registrations = 0;
        std::unique_ptr<QTranslator> translator;
    };

    TranslationCenter();
    ~TranslationCenter();
    std::unique_ptr<QTranslator> Load(const QString& name) const;

    std::map<QString, Catalogue> m_catalogues;
    QStringList m_directories;
    std::optional<QLocale> m_locale;
};
