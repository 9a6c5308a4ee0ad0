// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/ivalueview.h>

IValueView::~IValueView() = default;

bool IValueView::EndTyping(bool /*isConfirmed*/) {
    return false;
}

void IValueView::Commit(values::ValueBase& /*value*/) {}

QString IValueView::HiddenText() const {
    return QString();
}
