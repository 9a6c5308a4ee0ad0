// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Whether the process was started where windows can be shown.
bool HasDisplay();
