// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// Long texts in which a mixture of two of them, or a part of one, shows.
namespace uniformtext {

constexpr int Keys = 5;

inline QString Key(int number) {
    return QStringLiteral("Long/text%1").arg(number);
}

/// One character, repeated, and how often; both differ from round to round.
inline QString Make(int round) {
    const int length = 2000 + 37 * (round % 100);
    return QStringLiteral("%1:%2").arg(QString(length, QChar('a' + round % 26)), QString::number(length));
}

/// Whether Make() gives \a text for some round.
inline bool IsWhole(const QString& text) {
    const int end = text.indexOf(QLatin1Char(':'));
    return end > 0 && text.left(end) == QString(end, text[0]) && text.mid(end + 1) == QString::number(end);
}

}  // namespace uniformtext
