// SPDX-License-Identifier: Apache-2.0
#include <apps/common/event.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

namespace {

constexpr qint64 LargestNumber = qint64(1) << 53;  // a number of JSON holds no more

}  // namespace

QString Event::ToJson() const {
    const QJsonObject coded = said.ToObject();
    const QJsonObject object{
        {QStringLiteral("n"), number},
        {QStringLiteral("time"), time.toUTC().toString(Qt::ISODateWithMs)},
        {QStringLiteral("severity"), eventcodes::SeverityName(severity)},
        {QStringLiteral("source"), source},
        {QStringLiteral("who"), who},
        {QStringLiteral("code"), coded.isEmpty() ? QJsonValue(code) : coded.value(QStringLiteral("code"))},
        {QStringLiteral("args"), coded.value(QStringLiteral("args")).toArray()},
        {QStringLiteral("text"), text}};
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

std::optional<Event> Event::FromJson(const QString& json) {
    if (json.isEmpty() || json.size() > MaxLength) return std::nullopt;
    const QJsonObject object = QJsonDocument::fromJson(json.toUtf8()).object();
    const double number = object.value(QStringLiteral("n")).toDouble();
    Event event;
    event.time =
        QDateTime::fromString(object.value(QStringLiteral("time")).toString(), Qt::ISODateWithMs).toUTC();
    event.text = object.value(QStringLiteral("text")).toString();
    if (!(number >= 1 && number < LargestNumber) || !event.time.isValid() || event.text.isEmpty())
        return std::nullopt;
    event.number = static_cast<qint64>(number);
    event.severity = eventcodes::FindSeverity(object.value(QStringLiteral("severity")).toString());
    event.source = object.value(QStringLiteral("source")).toString();
    event.who = object.value(QStringLiteral("who")).toString();
    event.code = object.value(QStringLiteral("code")).toString();
    if (!event.code.isEmpty()) event.said = CodedText::FromJson(object).value_or(CodedText());
    return event;
}

QString Event::Translated() const {
    return said.IsEmpty() ? text : said.Translated();
}
