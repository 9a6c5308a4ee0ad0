// SPDX-License-Identifier: Apache-2.0
#include <apps/common/unit.h>

#include <array>
#include <cstddef>

namespace {

enum class EUse {
    Shown,       ///< and typed
    Typed,       ///< frequencies beyond MHz are shown in MHz, as people in this trade say them
    PrefixTyped  ///< as it stands: "m" is not "M"
};

/// A unit, or a multiple of it by a power of ten.
struct Multiple {
    const char* name;
    int power;
    EUse use;
};

// clang-format off
constexpr Multiple HertzMultiples[] = {
    {"Hz",  0, EUse::Shown},
    {"kHz", 3, EUse::Shown},
    {"MHz", 6, EUse::Shown},
    {"GHz", 9, EUse::Typed},
    {"k",   3, EUse::PrefixTyped},
    {"M",   6, EUse::PrefixTyped},
    {"G",   9, EUse::PrefixTyped},
};
constexpr Multiple Microseconds[] = {
    {"us", 0, EUse::Shown},
    {"ms", 3, EUse::Shown},
    {"s",  6, EUse::Shown},
    {"\xc2\xb5s", 0, EUse::Typed},  // the two signs for micro, which look the same
    {"\xce\xbcs", 0, EUse::Typed},
};
constexpr Multiple Milliseconds[] = {
    {"ms", 0, EUse::Shown},
    {"s",  3, EUse::Shown},
};
// clang-format on

}  // namespace

struct Unit::Row {
    const char* key;
    const Multiple* first;  ///< the unit itself
    std::size_t count;
    const char* accepted;

    const Multiple* begin() const { return first; }
    const Multiple* end() const { return first + count; }
};

namespace {

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

/// The number \a decimal times ten to the \a power, as a text.
QString Multiplied(const QString& decimal, int power) {
    const int mark = decimal.indexOf(QLatin1Char('e'), 0, Qt::CaseInsensitive);
    bool isNumber = true;
    const int exponent = mark < 0 ? 0 : decimal.midRef(mark + 1).toInt(&isNumber);
    // An exponent that is none, or as great as that, is told of as no number.
    if (!isNumber || exponent > 1000 || exponent < -1000) return decimal;
    return power + exponent == 0 ? decimal.left(mark)
                                 : decimal.left(mark) + QLatin1Char('e') + QString::number(power + exponent);
}

bool EndsWith(const QString& text, const Multiple& multiple) {
    const bool isAsItStands = multiple.use == EUse::PrefixTyped;
    return text.endsWith(QString::fromUtf8(multiple.name),
                         isAsItStands ? Qt::CaseSensitive : Qt::CaseInsensitive);
}

constexpr const char* FrequenciesTyped = "Hz, kHz, MHz, GHz, k, M or G";

template <std::size_t count>
constexpr Unit::Row RowOf(const char* key, const Multiple (&multiples)[count], const char* accepted) {
    return {key, multiples, count, accepted};
}

// clang-format off
constexpr std::array<Unit::Row, 5> Rows = {{
    RowOf("Frequency",                  HertzMultiples, FrequenciesTyped),
    RowOf("DefaultFrequencyForChannel", HertzMultiples, FrequenciesTyped),
    RowOf("SweepTime",                  Microseconds,   "us, ms or s"),
    RowOf("PollInterval",               Milliseconds,   "ms or s"),
    RowOf("ResponseTimeout",            Milliseconds,   "ms or s"),
}};
// clang-format on

}  // namespace

Unit Unit::Of(const QString& name) {
    for (const Row& row : Rows)
        if (name == QLatin1String(row.key)) return Unit(&row);
    return Unit(nullptr);
}

Unit Unit::Hertz() {
    return Unit(Rows.data());
}

bool Unit::IsHertz() const {
    return !IsEmpty() && m_row->first == HertzMultiples;
}

QString Unit::Name() const {
    return IsEmpty() ? QString() : QString::fromLatin1(m_row->first->name);
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
    for (const Multiple& multiple : *m_row) {
        if (multiple.use != EUse::Shown || whole <= multiple.power) break;
        power = multiple.power;
        *name = QString::fromLatin1(multiple.name);
    }
    return power == 0 ? decimal : ShiftedDown(sign, digits, point, power);
}

QString Unit::WithoutUnit(const QString& text) const {
    if (IsEmpty()) return text;
    const Multiple* found = nullptr;
    int length = 0;
    for (const Multiple& multiple : *m_row) {
        // The longest that fits: "MHz" ends in "Hz" too.
        const int typed = QString::fromUtf8(multiple.name).size();
        if (typed <= length || !EndsWith(text, multiple)) continue;
        found = &multiple;
        length = typed;
    }
    return found == nullptr ? text : Multiplied(text.chopped(length).trimmed(), found->power);
}

QString Unit::Accepted() const {
    return IsEmpty() ? QString() : QString::fromLatin1(m_row->accepted);
}
