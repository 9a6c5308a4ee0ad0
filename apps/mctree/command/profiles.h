// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <vector>

namespace mctree {

/// The servers that a file describes by sections: what stands below "[tower]" is said of "tower", one setting
/// a line, "connect = df7:7450". Lines that begin with "#" or ";" are comments.
class Profiles {
  public:
    struct Setting {
        QString name;
        QString value;  ///< without the double quotes around it, if there are any
        int line;       ///< from 1
    };

    /// Reads \a fileName. \return what is wrong with it, in one line; empty if nothing is. A file that is not
    /// there describes nothing.
    QString Read(const QString& fileName);

    /// The settings of \a profile; null if the file has none of that name.
    const std::vector<Setting>* Find(const QString& profile) const;
    /// The names of all, separated by commas.
    QString Names() const;

  private:
    struct Profile {
        QString name;
        std::vector<Setting> settings;
    };

    QString ReadLine(const QString& line, int number);

    std::vector<Profile> m_profiles;
};

}  // namespace mctree
