// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mctree/command/arguments.h>

#include <QtCore/QString>

#include <vector>

namespace mctree {

/// One option of the command line: its name, whether a value follows, what it belongs to, and what it does.
struct Option {
    enum class EBelongs { ToAll, ToServer, ToList, ToGet, ToSet, ToWatch, ToLines, ToEvents, ToPaths };

    const char* name;
    bool takesValue;
    EBelongs belongs;
    /// \return what is wrong with the value, in one line; empty if nothing is.
    QString (*apply)(Arguments& arguments, const QString& value);

    bool IsFor(ECommand command) const;
    /// Of the commands that it belongs to, for people.
    QString Commands() const;

    /// Null if no option has that name.
    static const Option* Find(const QString& name);
    /// All, in the order in which the help has them.
    static const std::vector<Option>& All();
};

/// The names of the options that say which server is meant: by a profile, and in which file it stands.
inline const QLatin1String ServerOption("-s");
inline const QLatin1String LongServerOption("--server");
inline const QLatin1String ProfilesOption("--profiles");

}  // namespace mctree
