// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/agetext.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>

#include <algorithm>

namespace {

QString Translated(const char* text, std::chrono::seconds::rep number) {
    return QCoreApplication::translate("Age", text).arg(number);
}

}  // namespace

QString agetext::Of(std::chrono::milliseconds age) {
    using namespace std::chrono_literals;
    constexpr auto day = 24h;
    const auto seconds = std::max(std::chrono::duration_cast<std::chrono::seconds>(age), 0s);
    if (seconds < 1min) return Translated(QT_TRANSLATE_NOOP("Age", "%1 s"), seconds.count());
    if (seconds < 1h) return Translated(QT_TRANSLATE_NOOP("Age", "%1 min"), seconds / 1min);
    if (seconds < 2 * day) return Translated(QT_TRANSLATE_NOOP("Age", "%1 h"), seconds / 1h);
    return Translated(QT_TRANSLATE_NOOP("Age", "%1 d"), seconds / day);
}

QString agetext::Moment(const QDateTime& moment, const QDateTime& now) {
    if (!moment.isValid()) return QString();
    const QDateTime local = moment.toLocalTime();
    const QString time = local.time().toString(QStringLiteral("HH:mm:ss"));
    if (local.date() == now.date()) return time;
    return QLocale().toString(local.date(), QLocale::ShortFormat) + QLatin1Char(' ') + time;
}

QString agetext::Moment(const QString& utc, const QDateTime& now) {
    return Moment(QDateTime::fromString(utc, Qt::ISODateWithMs), now);
}
