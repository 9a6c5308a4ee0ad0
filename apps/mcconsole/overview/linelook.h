// SPDX-License-Identifier: Apache-2.0
#pragma once

/// What is drawn on the line of all frequencies.
enum class ELineLook {
    Live,
    Veiled  ///< it lies below a veil, which takes half of every colour: without any, and dark enough to be
            ///< read
};
