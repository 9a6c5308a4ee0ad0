// SPDX-License-Identifier: Apache-2.0
#include <platform/app/idllinstance.h>

IDllInstance::~IDllInstance() = default;
