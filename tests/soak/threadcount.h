// SPDX-License-Identifier: Apache-2.0
#pragma once

/// How many threads this process has.
int CountThreads();
