// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/mpxorvs/mpxorvorder.h>

#include <apps/pages/mpxorvs/mpxorvcells.h>
#include <apps/pages/mpxorvs/mpxorvcontent.h>

namespace {

template <class T>
int CompareValues(const T& a, const T& b) {
    return a < b ? -1 : b < a ? 1 : 0;
}

int CompareNames(const MpxOrvContent& a, const MpxOrvContent& b) {
    const int byOrder = a.order.compare(b.order);
    return byOrder != 0 ? byOrder : a.name.compare(b.name);
}

/// "22": a number of more digits stands behind each of fewer.
void AppendNumber(QString* key, const QString& digits) {
    int zeros = 0;
    while (zeros + 1 < digits.size() && digits[zeros] == QLatin1Char('0'))
        ++zeros;
    const QString number = digits.mid(zeros);
    *key += QLatin1Char('0');
    *key += QChar(ushort(number.size()));
    *key += number;
}

}  // namespace

QString mpxorvorder::KeyOf(const QString& name) {
    QString key;
    QString digits;
    for (const QChar character : name.toCaseFolded()) {
        const bool isDigit = character >= QLatin1Char('0') && character <= QLatin1Char('9');
        if (isDigit) {
            digits += character;
            continue;
        }
        if (!digits.isEmpty()) AppendNumber(&key, digits);
        digits.clear();
        key += character;
    }
    if (!digits.isEmpty()) AppendNumber(&key, digits);
    return key;
}

int mpxorvorder::Compare(const MpxOrvContent& a, const MpxOrvContent& b) {
    if (a.isStatic != b.isStatic) return a.isStatic ? -1 : 1;
    return CompareNames(a, b);
}

int mpxorvorder::CompareIn(int column, const MpxOrvContent& a, const MpxOrvContent& b) {
    switch (column) {
        case mpxorvcells::Name:
            return CompareNames(a, b);
        case mpxorvcells::Kind:
            return CompareValues(!a.isStatic, !b.isStatic);
        case mpxorvcells::State:
            return CompareValues(a.state, b.state);
        case mpxorvcells::Frequency:
            return CompareValues(a.hz, b.hz);
        case mpxorvcells::Since:
            return CompareValues(a.since, b.since);
        case mpxorvcells::Suppression:
            return CompareValues(a.obeys, b.obeys);
        default:
            return mpxorvcells::Text(a, column).compare(mpxorvcells::Text(b, column), Qt::CaseInsensitive);
    }
}
