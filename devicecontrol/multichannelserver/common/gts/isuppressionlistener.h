// SPDX-License-Identifier: Apache-2.0
#pragma once

struct ModuleFailure;
struct ModuleIdentity;

/// Is told what becomes of the data modules of the ground transmitter suppression. Main thread.
class ISuppressionListener {
  public:
    virtual ~ISuppressionListener() = default;

    /// Comes with every poll that fails: whoever writes it down bounds what is written.
    virtual void OnModuleFailed(const ModuleFailure& failure) = 0;
    /// Once after failures. The module stays in error until somebody connects it anew.
    virtual void OnModuleAnswersAgain(const ModuleIdentity& module) = 0;
};
