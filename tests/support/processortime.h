// SPDX-License-Identifier: Apache-2.0
#pragma once

/// How long processors have worked for this process, in ms. (std::clock() tells on Windows how long it has
/// run.)
double ProcessorMilliseconds();
