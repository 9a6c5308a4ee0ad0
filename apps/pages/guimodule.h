// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/contenttranslation.h>

#include <QtCore/QString>

#include <memory>

class IDllInstance;
class QTranslator;

/// The library as a module of a program with windows, and the texts of that program in its language. One per
/// program, made before its windows and destroyed after. GUI thread.
class GuiModule {
  public:
    /// \a locale is a language, such as "de"; empty: that of the system.
    explicit GuiModule(const QString& locale);
    ~GuiModule();
    GuiModule(const GuiModule&) = delete;
    GuiModule& operator=(const GuiModule&) = delete;

    /// Stores what has to outlive the process, such as where windows are.
    void CommitData() const;

  private:
    void InstallQtTexts();

    std::unique_ptr<QTranslator> m_qtTexts;  ///< of Qt's own dialogs
    ContentTranslation m_contents;
    IDllInstance* m_module;  ///< destroyed by the module itself
};
