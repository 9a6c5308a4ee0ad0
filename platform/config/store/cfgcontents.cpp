// SPDX-License-Identifier: Apache-2.0
#include <platform/config/store/cfgcontents.h>

#include <QtCore/QStringList>

QString cfgcontents::Path(const QString& name) {
    const QLatin1Char slash('/');
    const bool isPath =
        !name.startsWith(slash) && !name.endsWith(slash) && !name.contains(QLatin1String("//"));
    return isPath ? name : name.split(slash, Qt::SkipEmptyParts).join(slash);
}
