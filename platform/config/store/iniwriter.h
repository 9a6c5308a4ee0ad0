// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/config/store/cfgcontents.h>

#include <QtCore/QByteArray>

/// Writes the text of a configuration file: the keys without a section first, then section by section, in the
/// order of the names. Whatever a QString can hold comes out as plain ASCII that reads as it was.
class IniWriter {
  public:
    IniWriter() = delete;

    static QByteArray Write(const CfgContents& contents);
};
