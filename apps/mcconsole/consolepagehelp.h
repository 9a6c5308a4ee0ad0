// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/pagehelp.h>

/// What the console's own pages are for.
std::vector<pagehelp::Text> ConsolePageHelp();
