// SPDX-License-Identifier: Apache-2.0
#pragma once

/// PathBinding knows no widget and lives beside the values. This is for those who knew it here.
#include <platform/values/pathbinding.h>
