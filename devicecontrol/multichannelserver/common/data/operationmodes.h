// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/device/stddevicedefinition.h>

/// The modes that a device can be in, as the device layer names them.
namespace operationmodes {

/// A function, since tables that are filled before main() name it.
inline const values::ValueDescriptor& Get() {
    return StdDeviceDefinition::g_vdOperationMode;
}

}  // namespace operationmodes
