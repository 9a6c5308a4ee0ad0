// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/servicenotifier.h>

#include <apps/mcserver/program/servicestatus_windows.h>

ServiceNotifier::ServiceNotifier() = default;

void ServiceNotifier::Ready(const QString& /*status*/) {
    ServiceStatus::Instance().Tell(ServiceStatus::EState::Running);
}

void ServiceNotifier::Stopping() {
    ServiceStatus::Instance().Tell(ServiceStatus::EState::Stopping);
}

// The service manager watches the process itself.
void ServiceNotifier::Alive() {}

void ServiceNotifier::Tell(const QByteArray& /*message*/) const {}
