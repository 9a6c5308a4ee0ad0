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

QStringList FieldsOf(const EventModel& model, int row) {
    QStringList fields;
    for (int column = 0; column < EventModel::ColumnCount; ++column)
        fields << EventModel::TextOf(model.LineOf(row), column);
    return fields;
}

QByteArray ToCsv(const EventModel& model) {
    QByteArray bytes;
    const auto add = [&bytes](const QStringList& fields) {
        QStringList quoted;
        for (const QString& field : fields)
            quoted << Quoted(field);
        bytes += quoted.join(QLatin1Char(',')).toUtf8() + "\r\n";
    };
    QStringList titles;
    for (int column = 0; column < EventModel::ColumnCount; ++column)
        titles << model.headerData(column, Qt::Horizontal).toString();
    add(titles);
    for (int row = 0; row < model.rowCount(); ++row)
        add(FieldsOf(model, row));
    return bytes;
}

QByteArray ToLines(const EventModel& model, const QString& server, const QDateTime& now) {
    QString text = QCoreApplication::translate("EventExport", "Events of %1, %2")
                       .arg(server, now.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
    text += QStringLiteral("\n\n");
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList fields = FieldsOf(model, row);
        fields.move(EventModel::TimeColumn, 0);
        fields.removeAll(QString());
        text += fields.join(QStringLiteral("  ")) + QLatin1Char('\n');
    }
    return text.toUtf8();
}

}  // namespace

QByteArray eventexport::ToBytes(const EventModel& model, EFormat format, const QString& server,
                                const QDateTime& now) {
    return format == EFormat::Csv ? ToCsv(model) : ToLines(model, server, now);
}

QString eventexport::ProposedName(const QString& server, const QDate& date, EFormat format) {
    QString name = server;
    for (QChar& character : name)
        if (!character.isLetterOrNumber() && character != QLatin1Char('.')) character = QLatin1Char('-');
    return QStringLiteral("events-%1-%2.%3")
        .arg(name, date.toString(Qt::ISODate),
             format == EFormat::Csv ? QStringLiteral("csv") : QStringLiteral("txt"));
}
