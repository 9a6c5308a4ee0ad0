// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/ivtlosses.h>

IVtLosses::~IVtLosses() = default;
