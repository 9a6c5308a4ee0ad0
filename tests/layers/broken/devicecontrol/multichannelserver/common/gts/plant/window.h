// SPDX-License-Identifier: Apache-2.0
// Breaks the layers on purpose: the check must find it.
#include <devicecontrol/multichannelserver/common/gts/datamodule.h>
