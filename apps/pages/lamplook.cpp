// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/lamplook.h>

#include <apps/pages/severitylook.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QFont>
#include <QtWidgets/QApplication>

QString lamplook::Text(ELamp lamp) {
    switch (lamp) {
        case ELamp::Keyed:
            return QCoreApplication::translate("InputStatusModel", "\u25cf keyed");
        case ELamp::Silent:
            return QCoreApplication::translate("InputStatusModel", "\u25cb silent");
        case ELamp::Unsupervised:
            return QCoreApplication::translate("InputStatusModel", "\u2715 not supervised");
        case ELamp::Unknown:
            return QCoreApplication::translate("InputStatusModel", "? not live");
    }
    Q_UNREACHABLE();
}

QVariant lamplook::Look(ELamp lamp, int role) {
    if (lamp == ELamp::Silent) return QVariant();
    if (role == Qt::ForegroundRole)
        return severitylook::Colour(lamp == ELamp::Unknown ? ESeverity::Stale : ESeverity::Act,
                                    QApplication::palette());
    if (role == Qt::FontRole && lamp == ELamp::Keyed) {
        QFont bold = QApplication::font();
        bold.setBold(true);
        return bold;
    }
    return QVariant();
}
