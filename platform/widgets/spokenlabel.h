// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/widgetsexport.h>

#include <QtCore/QString>

class QLabel;

/// Labels that show a value, as assistive technology reads them: the name that the label was given, then what
/// it shows. By itself a label that has a name is read without its text. GUI thread only.
namespace spokenlabel {

/// Lets \a label be read so; once per label.
MCS_WIDGETS_EXPORT void Install(QLabel& label);
/// Shows \a text, and tells assistive technology.
MCS_WIDGETS_EXPORT void SetText(QLabel& label, const QString& text);

}  // namespace spokenlabel
