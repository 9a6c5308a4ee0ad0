// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/servicecommand.h>

namespace {

/// A quote ends a quoted word unless backslashes stand before it, of which two mean one then, and only then.
QString Quoted(const QString& word) {
    if (!word.isEmpty() && !word.contains(QLatin1Char(' ')) && !word.contains(QLatin1Char('\t')) &&
        !word.contains(QLatin1Char('"')))
        return word;
    QString quoted(QLatin1Char('"'));
    int backslashes = 0;
    for (const QChar character : word) {
        if (character == QLatin1Char('"')) quoted += QString(backslashes + 1, QLatin1Char('\\'));
        backslashes = character == QLatin1Char('\\') ? backslashes + 1 : 0;
        quoted += character;
    }
    return quoted + QString(backslashes, QLatin1Char('\\')) + QLatin1Char('"');
}

}  // namespace

QString servicecommand::Line(const QStringList& words) {
    QStringList quoted;
    for (const QString& word : words)
        quoted << Quoted(word);
    return quoted.join(QLatin1Char(' '));
}
