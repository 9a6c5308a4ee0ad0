// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/gts/modulesettings.h>

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QString>

#include <vector>

/// What a recovery file of the suppression says: the modules as they were set last, and which configuration
/// that was a change of.
struct RecoveryContent {
    QString configuration;  ///< its file
    QByteArray mark;        ///< of its section when the server had read it
    QDateTime time;         ///< UTC, of the last change
    std::vector<ModuleSettings> modules;

    /// As a file, with a sum of what is in it.
    QByteArray ToBytes() const;
    /// Takes over what \a bytes say. False, with what is wrong with them in one line in \a defect, unless
    /// they are a whole file that ToBytes made.
    bool FromBytes(const QByteArray& bytes, QString* defect);

    static constexpr int MaxBytes = 4 * 1024 * 1024;  ///< as much as a configuration may have
};
