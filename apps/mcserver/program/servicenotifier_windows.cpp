// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/servicenotifier.h>

// Whoever runs the program as a service there watches the process itself.
ServiceNotifier::ServiceNotifier() = default;

void ServiceNotifier::Ready(const QString& /*status*/) {}

void ServiceNotifier::Stopping() {}

void ServiceNotifier::Alive() {}

void ServiceNotifier::Tell(const QByteArray& /*message*/) const {}
