// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/gts/modulename.h>

#include <QtCore/QString>

/// Which data module is meant, in the parts that a sentence about it may name.
struct ModuleIdentity {
    QString type;
    int index = 0;  ///< from 0 on
    QString address;
    QString label = QString();  ///< what people call it; empty where they call it nothing

    /// What people are told of it: "Tower mast", or "ADAM-6051 1".
    QString GetName() const { return modulename::OfModule(label, type, index); }
    /// What its node in the tree is called: type and index, of which no two modules have both.
    QString NodeName() const {
        QString name = type;
        name.replace(QLatin1Char('/'),
                     QLatin1Char('_'));  // a type may hold any text, the name of a node no "/"
        return QStringLiteral("%1-%2").arg(name, QString::number(index));
    }
};
