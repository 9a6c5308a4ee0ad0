// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/text/units.h>

#include <array>

namespace mctree {

struct Unit::Row {
    /// A unit, or a multiple of it by a power of ten.
    struct Multiple {
        const char* name;
        int power;
    };
    using Multiples = std::array<Multiple, 3>;

    const char* key;
    const Multiples* multiples;
};

namespace {

constexpr Unit::Row::Multiples Hertz = {{{"Hz", 0}, {"kHz", 3}, {"MHz", 6}}};
constexpr Unit::Row::Multiples Microseconds = {{{"us", 0}, {"ms", 3}, {"s", 6}}};
constexpr Unit::Row::Multiples Milliseconds = {{{"ms", 0}, {"s", 3}, {"s", 3}}};

/// How many digits the number has before its point; 0 or less below 1.
int CountWhole(const QString& digits, int point) {
    int zeros = 0;
    while (zeros < digits.size() && digits[zeros] == QLatin1Char('0'))
        ++zeros;
    return zeros == digits.size() ? 0 : point - zeros;
}

/// \a decimal divided by ten to the \a power, digit by digit, so that nothing is rounded.
QString ShiftedDown(const QString& sign, const QString& digits, int point, int power) {
    QString shifted = digits;
    const int target = point - power;
    if (target <= 0) shifted.prepend(QString(1 - target, QLatin1Char('0')));
    const int whole = target <= 0 ? 1 : target;
    QString fraction = shifted.mid(whole);
    while (fraction.endsWith(QLatin1Char('0')))
        fraction.chop(1);
    const QString number = sign + shifted.left(whole);
    return fraction.isEmpty() ? number : number + QLatin1Char('.') + fraction;
}

// clang-format off
constexpr std::array<Unit::Row, 5> Rows = {{
    {"Frequency",                  &Hertz},
    {"DefaultFrequencyForChannel", &Hertz},
    {"SweepTime",                  &Microseconds},
    {"PollInterval",               &Milliseconds},
    {"ResponseTimeout",            &Milliseconds},
}};
// clang-format on

}  // namespace

Unit Unit::Of(const QString& name) {
    for (const Row& row : Rows)
        if (name == QLatin1String(row.key)) return Unit(&row);
    return Unit(nullptr);
}

QString Unit::Name() const {
    return IsEmpty() ? QString() : QString::fromLatin1((*m_row->multiples)[0].name);
}

QString Unit::Scaled(const QString& decimal, QString* name) const {
    *name = Name();
    if (IsEmpty() || decimal.contains(QLatin1Char('e')) || decimal.contains(QLatin1Char('n')))
        return decimal;  // too great or small to be written out, or no number
    const QString sign = decimal.startsWith(QLatin1Char('-')) ? QStringLiteral("-") : QString();
    QString digits = decimal.mid(sign.size());
    const int dot = digits.indexOf(QLatin1Char('.'));
    const int point = dot < 0 ? digits.size() : dot;
    digits.remove(QLatin1Char('.'));
    const int whole = CountWhole(digits, point);
    int power = 0;
    for (const Row::Multiple& multiple : *m_row->multiples) {
        if (whole <= multiple.power) break;
        power = multiple.power;
        *name = QString::fromLatin1(multiple.name);
    }
    return power == 0 ? decimal : ShiftedDown(sign, digits, point, power);
}

QString Unit::WithoutUnit(const QString& text) const {
    if (IsEmpty()) return text;
    const Row::Multiple* found = nullptr;
    for (const Row::Multiple& multiple : *m_row->multiples) {
        // The longest that fits: "MHz" ends in "Hz" too.
        const QLatin1String name(multiple.name);
        if (text.endsWith(name) && (found == nullptr || name.size() > QLatin1String(found->name).size()))
            found = &multiple;
    }
    if (found == nullptr) return text;
    const QString number = text.chopped(QLatin1String(found->name).size()).trimmed();
    return found->power == 0 ? number : number + QLatin1Char('e') + QString::number(found->power);
}

}  // namespace mctree
