// SPDX-License-Identifier: Apache-2.0
// Shows a room through its face on purpose: the check must find it.
#include <platform/config/store/cfgstore.h>
