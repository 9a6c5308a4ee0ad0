// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// Who did something, as the server tells it in one text: "mcconsole on tower1 (10.0.0.5:50000)".
namespace whotext {

/// \a who in the language of the application: what is no name in it is translated.
QString Translated(const QString& who);

}  // namespace whotext
