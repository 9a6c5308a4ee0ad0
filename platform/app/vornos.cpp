// SPDX-License-Identifier: Apache-2.0
#include <platform/app/vornos.h>

#include <QtCore/QSysInfo>

namespace {

/// Qt covers every system that the library runs on.
class QtVornOS final : public VornOS {
  public:
    QString GetMachineName() const override { return QSysInfo::machineHostName(); }
};

}  // namespace

VornOS::~VornOS() = default;

std::unique_ptr<VornOS> VornOS::Create() {
    return std::make_unique<QtVornOS>();
}
