// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// One thing at one frequency.
struct FrequencyMark {
    enum class EKind { Own, Master, User, Wanted, Keyed, Unsupervised };

    EKind kind = EKind::User;
    double hz = 0;
    QString label;   ///< short, beside the mark
    QString detail;  ///< who, and why

    bool operator==(const FrequencyMark& other) const {
        return kind == other.kind && hz == other.hz && label == other.label && detail == other.detail;
    }
};
