// SPDX-License-Identifier: Apache-2.0
#include <apps/common/closedoutput.h>

ClosedOutput::ClosedOutput(QObject* parent) : QObject(parent) {}
