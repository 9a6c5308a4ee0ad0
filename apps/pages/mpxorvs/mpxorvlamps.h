// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/mpxorvs/mpxorvcontent.h>

#include <QtGui/QIcon>

/// The lamps of the list of MpxORVs: each state has a shape of its own beside its colour, which is neither
/// too light for a light list nor too dark for a dark one; in a selected row the lamp stands on a white
/// plate.
namespace mpxorvlamps {

constexpr int Size = 14;  ///< pixels, in each direction

const QIcon& Get(MpxOrvContent::EState state);

}  // namespace mpxorvlamps
