// SPDX-License-Identifier: Apache-2.0
#include <fuzz/script.h>

#include <platform/vtclient/wire/vtlimits.h>

#include <array>
#include <iterator>
#include <limits>

namespace {

constexpr unsigned FirstSpecial = 224;  // bytes below are meant literally

constexpr std::array<quint64, 16> Numbers = {255,
                                             256,
                                             4096,
                                             65535,
                                             65536,
                                             0x7ffffffe,
                                             0x7fffffff,
                                             0x80000000,
                                             0xfffffffe,
                                             0xffffffff,
                                             0x100000000,
                                             0x7ffffffffffffffe,
                                             0x7fffffffffffffff,
                                             0x8000000000000000,
                                             0xfffffffffffffffe,
                                             0xffffffffffffffff};

constexpr std::array<double, 8> Reals = {0.0,
                                         -0.0,
                                         0.5,
                                         std::numeric_limits<double>::max(),
                                         std::numeric_limits<double>::lowest(),
                                         std::numeric_limits<double>::infinity(),
                                         -std::numeric_limits<double>::infinity(),
                                         std::numeric_limits<double>::quiet_NaN()};

const char* const Names[] = {"a", "b", "c", "n", "t", "x", "y", "own"};

/// Around what fits a batch, a change and a frame.
constexpr std::array<int, 12> Lengths = {
    vtlimits::MaxHelloText,      vtlimits::MaxHelloText + 1, vtlimits::MaxNameLength,
    vtlimits::MaxNameLength + 1, vtlimits::MaxPathLength,    vtlimits::MaxPathLength + 1,
    vtlimits::BatchTarget - 40,  vtlimits::BatchTarget,      vtlimits::MaxChange - 1000,
    vtlimits::MaxChange,         vtlimits::MaxFrame - 20,    vtlimits::MaxFrame + 1};
/// Enough to pass every limit; more only takes time.
constexpr int MaxLongTexts = 8;

}  // namespace

quint64 Script::Number() {
    const unsigned byte = Byte();
    if (byte < FirstSpecial) return byte;
    if (byte - FirstSpecial < Numbers.size()) return Numbers[byte - FirstSpecial];
    quint64 number = 0;
    for (unsigned i = 0; i < 1U + byte % 8U; ++i)
        number = number << 8U | Byte();
    return number;
}

qint64 Script::SignedNumber() {
    const quint64 number = Number();
    return static_cast<qint64>(Flag() ? ~number : number);
}

double Script::Real() {
    const unsigned byte = Byte();
    if (byte < FirstSpecial) return byte;
    if (byte - FirstSpecial < Reals.size()) return Reals[byte - FirstSpecial];
    return static_cast<double>(SignedNumber()) / 64;
}

QByteArray Script::Bytes() {
    const unsigned count = Byte();
    QByteArray bytes;
    for (unsigned i = 0; i < count && !IsEnd(); ++i)
        bytes.append(static_cast<char>(Byte()));
    return bytes;
}

QString Script::LongText() {
    const unsigned byte = Byte();
    if (++m_longTexts > MaxLongTexts) return QStringLiteral("long");
    const int length = Lengths[byte % Lengths.size()];
    // One or three bytes each, once encoded.
    return QString((byte & 0x80U) == 0 ? length : length / 3,
                   (byte & 0x80U) == 0 ? QChar(u'l') : QChar(u'\u20ac'));
}

QString Script::Text() {
    switch (const unsigned byte = Byte(); byte) {
        case 0xff:
            return LongText();
        case 0xfe:
            return QString(QChar(0xd800U)) + Name();  // half a character
        case 0xfd:
            return QStringLiteral("\u00c4\u20ac\U0001f600");
        case 0xfc:
            return QStringLiteral("a/b");
        case 0xfb:
            return QString(QChar(0U)) + Name();
        case 0:
            return QString();
        default:
            return byte < 0x80 ? Name() : QString::fromUtf8(Bytes());
    }
}

QString Script::Name() {
    const unsigned byte = Byte();
    if (byte >= 240) return Text();
    if (byte >= 64) return QStringLiteral("i%1").arg(byte);
    return QLatin1String(Names[byte % std::size(Names)]);
}

QString Script::Path() {
    const unsigned byte = Byte();
    if (byte >= 240) return Text();
    QString path = QStringLiteral("/S");
    for (unsigned i = 0; i < byte % 4; ++i)
        path += QLatin1Char('/') + Name();
    return byte >= 224 ? path.mid(2) + QLatin1Char('/') : path;
}
