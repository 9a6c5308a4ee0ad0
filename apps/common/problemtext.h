// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// What went wrong, as the system, the libraries and the server's refusals say it: in English sentences,
/// without a code beside them. Main thread.
namespace problemtext {

/// \a english in the language of the application, with what stands in it as it is: names, numbers, another
/// such sentence. A sentence that is not known stays as it is, and so does "NAME: " before one that is.
QString Translated(const QString& english);

/// The same of a sentence beside which the system's number of the error is told: Windows says it in its own
/// words, and in its own language, so there the number decides.
QString Translated(const QString& english, const QString& number);

}  // namespace problemtext
