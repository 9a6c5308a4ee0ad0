// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/guimodule.h>

#include <tests/apps/mcconsole/englishtexts.h>
#include <tests/apps/mcconsole/visibletexts.h>
#include <tests/support/printing.h>

#include <QtCore/QLocale>

#include <set>
#include <string>

/// The German language, from before there is any window: the first base of a test, which reads what it shows.
class InGerman {
  public:
    InGerman(const InGerman&) = delete;
    InGerman& operator=(const InGerman&) = delete;

  protected:
    InGerman() : m_module(QStringLiteral("de")) {}
    ~InGerman() { QLocale::setDefault(QLocale::c()); }

    /// What to be called with what is read when \a moment has come.
    visibletexts::Visit ReadAt(const char* moment) {
        return [this, moment](const QString& where, const QString& text) {
            ++count;
            const QString fault = english.Fault(text);
            if (fault.isEmpty() || !m_reported.insert((where + text).toStdString()).second) return;
            faults += QStringLiteral("%1: %2: \"%3\" (%4)\n")
                          .arg(QLatin1String(moment), where, text, fault)
                          .toStdString();
        };
    }

    EnglishTexts english;
    std::string faults;  ///< a line each
    int count = 0;       ///< of texts

  private:
    std::set<std::string> m_reported;
    GuiModule m_module;
};
