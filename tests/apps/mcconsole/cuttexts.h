// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QWidget>

#include <string>
#include <vector>

/// Looks for what people cannot read to its end.
namespace cuttexts {

/// Each text in \a window that is seen and does not fit, with the widget that it is of, and how many pixels
/// it lacks. A cell of a table may be too narrow if it says by a tool tip what is in it; a button that
/// shortens its text itself counts as cut.
std::vector<std::string> Find(const QWidget& window);
/// The scroll bars that are seen in \a window, by whose they are.
std::vector<std::string> ScrollBars(const QWidget& window, Qt::Orientation orientation);

}  // namespace cuttexts
