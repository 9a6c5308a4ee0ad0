// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/hamlib/hamlibsettings.h>

#include <QtCore/QRegularExpression>

namespace {

/// False unless \a text is a number from \a lowest to \a highest.
bool TakeNumber(const QString& text, int lowest, int highest, int* number) {
    bool isNumber = false;
    *number = text.toInt(&isNumber);
    return isNumber && *number >= lowest && *number <= highest;
}

QString NumberFault(const QString& name, const QString& text, int lowest, int highest) {
    return QStringLiteral("%1: '%2' is no number from %3 to %4")
        .arg(name, text, QString::number(lowest), QString::number(highest));
}

QString TakeSetting(const QString& name, const QString& value, HamlibSettings* settings) {
    constexpr int MaxWidth = 10000000;
    constexpr int MinSpeed = 75;
    constexpr int MaxSpeed = 4000000;
    static const QRegularExpression modeWord(QStringLiteral("^[A-Za-z0-9-]{1,15}$"));
    if (name == QLatin1String("mode")) {
        if (!modeWord.match(value).hasMatch()) return QStringLiteral("mode: '%1' is no mode").arg(value);
        settings->mode = value.toUpper();
        return QString();
    }
    if (name == QLatin1String("width"))
        return TakeNumber(value, 1, MaxWidth, &settings->width) ? QString()
                                                                : NumberFault(name, value, 1, MaxWidth);
    if (name == QLatin1String("speed"))
        return TakeNumber(value, MinSpeed, MaxSpeed, &settings->speed)
                   ? QString()
                   : NumberFault(name, value, MinSpeed, MaxSpeed);
    return QStringLiteral("there is no setting '%1', only mode, width and speed").arg(name);
}

QString TakePort(const QString& port, HamlibSettings* settings) {
    constexpr int MaxLength = 200;  // of what Hamlib keeps of it
    if (port.isEmpty()) return QStringLiteral("a port is empty");
    if (port.size() > MaxLength) return QStringLiteral("a port is longer than %1 characters").arg(MaxLength);
    if (settings->ports.contains(port)) return QStringLiteral("the port '%1' is there twice").arg(port);
    if (settings->ports.size() == HamlibSettings::MaxReceivers)
        return QStringLiteral("there are more than %1 receivers").arg(HamlibSettings::MaxReceivers);
    settings->ports << port;
    return QString();
}

}  // namespace

QString HamlibSettings::Parse(const QString& text) {
    constexpr int MaxModel = 1000000;
    *this = HamlibSettings();
    const QStringList words = text.split(QLatin1Char(','));
    if (!TakeNumber(words.first().trimmed(), 1, MaxModel, &model))
        return QStringLiteral("'%1' is no number of a model of Hamlib: rigctl --list shows them")
            .arg(words.first());
    for (int i = 1; i < words.size(); ++i) {
        const QString word = words[i].trimmed();
        const int equals = word.indexOf(QLatin1Char('='));
        const QString fault =
            equals > 0 ? TakeSetting(word.left(equals), word.mid(equals + 1), this) : TakePort(word, this);
        if (!fault.isEmpty()) return fault;
    }
    return QString();
}
