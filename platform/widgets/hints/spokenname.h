// SPDX-License-Identifier: Apache-2.0
#pragma once

class QWidget;

/// What assistive technology calls a widget.
namespace spokenname {

/// Whether \a widget has a name besides its accessibleName(): its own text, or a label that is its caption.
bool IsNamedOtherwise(const QWidget& widget);

}  // namespace spokenname
