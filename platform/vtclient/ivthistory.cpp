// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/ivthistory.h>

IVtHistory::~IVtHistory() = default;
