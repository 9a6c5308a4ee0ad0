// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/ivalueview.h>

IValueView::~IValueView() = default;
