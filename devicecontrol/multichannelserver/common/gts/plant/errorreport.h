// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// What people are told of a module's failure, by a trace and by the text in the tree. Main thread.
namespace errorreport {

/// The sentence, in the language of the application.
QString Text(const QString& name, const QString& address, int errorcode, const QString& errortext);
void Trace(const QString& message);
/// Each error is an occurrence: one that repeats the last is told too.
void Write(const QString& message);
/// Makes the value, without a text unless it is there, so that whoever looks for it finds that there was no
/// error.
void Provide();

}  // namespace errorreport
