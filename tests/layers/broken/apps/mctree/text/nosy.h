// SPDX-License-Identifier: Apache-2.0
// Passes by a face on purpose, and goes up a room: the check must find both.
#include <apps/mctree/command/help.h>
#include <apps/mctree/text/table.h>
#include <platform/config/store/cfgstore.h>
