// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <memory>

class IRigMaker;
struct HamlibSettings;

/// What knows Hamlib is a module of its own, which is loaded where it is asked for, and then stays.
namespace hamlibmodule {

/// Null with the reason in \a error, one line. Main thread.
std::unique_ptr<IRigMaker> Load(const HamlibSettings& settings, QString* error);

/// What the module offers under EntryPoint. A module that is not of the version \a version says so.
using Create = IRigMaker* (*)(const char* version, const HamlibSettings& settings, QString* error);
inline constexpr const char* EntryPoint = "McsCreateRigMaker";

}  // namespace hamlibmodule
