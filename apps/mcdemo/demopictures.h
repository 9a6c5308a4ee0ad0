// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QDir>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// What a console drew into a folder.
struct DemoPictures {
    QStringList names;  ///< of the files in the folder
    QString problem;    ///< why some or all are missing; else empty

    /// Runs \a console with \a arguments, by which it draws its pages into \a folder and ends.
    static DemoPictures Take(const QString& console, const QStringList& arguments, const QDir& folder);
};
