// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/dimodule/inputs.h>

#include <QtCore/QString>

#include <chrono>
#include <random>

namespace dimodule {

/// How the inputs change by themselves.
struct Pattern {
    enum class EKind { None, Walk, Blink, Random };

    EKind kind = EKind::None;
    std::chrono::milliseconds interval{500};

    /// Reads "NAME[:MS]". What is wrong with it; empty if nothing is.
    static QString Parse(const QString& text, Pattern* pattern);

    /// The states of \a inputs at \a step (from 0): one input after the other is keyed, or all of them every
    /// other step, or each by chance.
    quint32 StatesAt(int step, const Inputs& inputs, std::mt19937& random) const;
};

}  // namespace dimodule
