// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/listenaddress.h>
#include <apps/common/programoptions.h>
#include <apps/dimodule/fault.h>
#include <apps/dimodule/inputs.h>
#include <apps/dimodule/pattern.h>

#include <QtCore/QStringList>

#include <vector>

namespace dimodule {

/// What the command line asks for.
struct ModuleOptions : ProgramOptions {
    static constexpr int DefaultPort = 1502;
    static constexpr int MaxModules = 1000;

    std::vector<ListenAddress> listen;  ///< of each module
    Inputs inputs;
    Pattern pattern;
    Fault fault;
    QString scriptFile;
    unsigned seed = 1;

    /// Reads \a arguments, the program's name first. Needs the application object.
    static ModuleOptions Parse(const QStringList& arguments);
};

}  // namespace dimodule
