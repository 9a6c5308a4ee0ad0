// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/platformexport.h>

#include <QtCore/QString>

#include <memory>

/// What the library asks of the operating system. Any thread.
class MCS_PLATFORM_EXPORT VornOS {
  public:
    static std::unique_ptr<VornOS> Create();  ///< this system's; never null

    virtual ~VornOS();
    VornOS(const VornOS&) = delete;
    VornOS& operator=(const VornOS&) = delete;

    /// The machine's host name; null where the system has none.
    virtual QString GetMachineName() const = 0;

  protected:
    VornOS() = default;
};
