// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// Which data module is meant, in the parts that a sentence about it may name.
struct ModuleIdentity {
    QString type;
    int index = 0;  ///< from 0 on
    QString address;

    /// What its node in the tree is called: type and index, of which no two modules have both.
    QString NodeName() const {
        QString name = type;
        name.replace(QLatin1Char('/'),
                     QLatin1Char('_'));  // a type may hold any text, the name of a node no "/"
        return QStringLiteral("%1-%2").arg(name, QString::number(index));
    }
};
