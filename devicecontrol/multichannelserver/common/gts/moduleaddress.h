// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QString>

/// What people are told of an address of a data module, in their language. GUI thread.
class MCS_COMMON_EXPORT ModuleAddress {
    Q_DECLARE_TR_FUNCTIONS(ModuleAddress)

  public:
    ModuleAddress() = delete;

    /// Why \a address cannot be right; empty if it can.
    static QString GetFault(const QString& address);
    /// Where the module is asked, as ModbusTcpInterfaceCreator takes it. Any thread.
    static QString ToInterfaceAddress(const QString& address);
};
