// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

namespace markuptext {

/// What people read of \a html, paragraph by paragraph, without the formats: for what would take too long to
/// be read as what it is. A cell of a table is a paragraph.
QString Of(const QString& html);

}  // namespace markuptext
