// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// What holds from one frequency to another.
struct FrequencyBand {
    enum class EKind {
        Master,  ///< what the job master receives
        Outside  ///< what the device cannot be tuned to
    };

    EKind kind = EKind::Outside;
    double from = 0;  ///< Hz
    double to = 0;    ///< Hz
    QString label;    ///< short, within the band
    QString detail;

    bool operator==(const FrequencyBand& other) const {
        return kind == other.kind && from == other.from && to == other.to && label == other.label &&
               detail == other.detail;
    }
};
