// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/gts/moduleidentity.h>

#include <QtCore/QString>

/// Why a data module failed, in parts: each place that tells of it makes a sentence in its own language.
struct ModuleFailure {
    ModuleIdentity module;
    int code = 0;          ///< of the operating system, or of Modbus
    QString text;          ///< of that code, one line, in the system's neutral language
    QString addressFault;  ///< what is wrong with the module's address, in English; empty if it may be right
    bool isRepeated = false;  ///< the module was in error already
};
