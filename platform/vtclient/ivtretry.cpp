// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/ivtretry.h>

IVtRetry::~IVtRetry() = default;
