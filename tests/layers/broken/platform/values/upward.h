// SPDX-License-Identifier: Apache-2.0
// Breaks the layers on purpose: the check must find both.
#include <platform/config/icfg.h>

#include <QtNetwork/QTcpSocket>
