// SPDX-License-Identifier: Apache-2.0
#include <platform/config/icfg.h>

ICfg::~ICfg() = default;
