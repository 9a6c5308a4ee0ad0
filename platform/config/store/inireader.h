// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/config/store/cfgcontents.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// Reads the text of a configuration file: sections in brackets, "key = content", comments after ";" and "#".
/// Case counts. What IniWriter writes reads as it was, and what people write by hand as it is meant: blanks
/// around names and contents do not count, a content in quotes may hold anything, also ends of lines.
class IniReader {
  public:
    IniReader() = delete;

    /// The contents of \a bytes. False with the reason in \a defect, one line, for what is no such text, or
    /// is broken off; \a contents is empty then. What holds a key twice gives it its last content.
    static bool Read(const QByteArray& bytes, CfgContents* contents, QString* defect);
};
