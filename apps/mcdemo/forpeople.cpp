// SPDX-License-Identifier: Apache-2.0
#include "forpeople.h"

#include <apps/common/event.h>

#include <QtCore/QStringList>

QString forpeople::Rows(const QString& rows) {
    QStringList shown;
    for (const QString& row : rows.split(QLatin1Char('\n'))) {
        const QString path = row.section(QLatin1Char('\t'), 0, 0);
        const QString content = row.section(QLatin1Char('\t'), 1);
        const std::optional<Event> event = Event::FromJson(content);
        if (event)
            shown << path + QLatin1Char('\t') + event->text;
        else if (!path.endsWith(QLatin1String("Code")))
            shown << row;
    }
    return shown.join(QLatin1Char('\n'));
}
