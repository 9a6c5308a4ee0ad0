// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/events/eventexport.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QStringList>

namespace {

QString Quoted(QString field) {
    // What begins so would be taken for a formula by programs for tables.
    if (!field.isEmpty() && QStringLiteral("=+-@").contains(field[0])) field.prepend(QLatin1Char('\''));
    if (!field.contains(QLatin1Char(',')) && !field.contains(QLatin1Char('"')) &&
        !field.contains(QLatin1Char('\n')) && !field.contains(QLatin1Char('\r')))
        return field;
    return QLatin1Char('"') + field.replace(QLatin1Char('"'), QStringLiteral("\"\"")) + QLatin1Char('"');
}

QByteArray ToRow(const QStringList& fields) {
    QStringList quoted;
    for (const QString& field : fields)
        quoted << Quoted(field);
    return quoted.join(QLatin1Char(',')).toUtf8() + "\r\n";
}

}  // namespace

QByteArray eventexport::Head(const EventModel& model, EFormat format, const QString& server,
                             const QDateTime& now) {
    if (format == EFormat::Text)
        return (QCoreApplication::translate("EventExport", "Events of %1, %2")
                    .arg(server, now.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))) +
                QStringLiteral("\n\n"))
            .toUtf8();
    QStringList titles;
    for (int column = 0; column < EventModel::ColumnCount; ++column)
        titles << model.headerData(column, Qt::Horizontal).toString();
    return ToRow(titles);
}

QByteArray eventexport::ToBytes(const EventList::Line& event, EFormat format) {
    QStringList fields;
    for (int column = 0; column < EventModel::ColumnCount; ++column)
        fields << EventModel::TextOf(event, column);
    if (format == EFormat::Csv) return ToRow(fields);
    fields.move(EventModel::TimeColumn, 0);
    fields.removeAll(QString());
    return (fields.join(QStringLiteral("  ")) + QLatin1Char('\n')).toUtf8();
}

QString eventexport::ProposedName(const QString& server, const QDate& date, EFormat format) {
    QString name = server;
    for (QChar& character : name)
        if (!character.isLetterOrNumber() && character != QLatin1Char('.')) character = QLatin1Char('-');
    return QStringLiteral("events-%1-%2.%3")
        .arg(name, date.toString(Qt::ISODate),
             format == EFormat::Csv ? QStringLiteral("csv") : QStringLiteral("txt"));
}
