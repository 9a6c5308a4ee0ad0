// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QTranslator>

/// The texts of Qt's own buttons, menus and dialogs in the language of the application, for systems where
/// Qt's catalogues are not installed. Once installed it finds them by their English text, whatever class says
/// them.
class QtTexts : public QTranslator {
    Q_OBJECT

  public:
    using QTranslator::QTranslator;

    QString translate(const char* context, const char* sourceText, const char* disambiguation,
                      int n) const override;
    bool isEmpty() const override { return false; }
};
