// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// What people are told of a data module and its inputs: the names that an operator gave them, or numbers as
/// the tables count.
namespace modulename {

/// "Tower mast", or "ADAM-6051 1": the list of modules counts from 1.
inline QString OfModule(const QString& label, const QString& type, int index) {
    if (!label.isEmpty()) return label;
    return QStringLiteral("%1 %2").arg(type, QString::number(qint64{index} + 1));
}

/// "Tower 1", or "DI 3": the columns of inputs count from 0, as the modules do.
inline QString OfInput(const QString& label, int input) {
    return label.isEmpty() ? QStringLiteral("DI %1").arg(input) : label;
}

/// The same in the middle of a sentence: "input Tower 1", or "input 3".
inline QString InSentence(const QString& label, int input) {
    return QStringLiteral("input %1").arg(label.isEmpty() ? QString::number(input) : label);
}

}  // namespace modulename
