// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/list/mcsmpxorvstatusicons.h>

QPixmap MCSMpxORVStatusIcons::MakeLamp(const char* border, const char* fill) {
    const char* const image[] = {"10 10 4 1",  " \tc None",  border,       fill,         "@\tc #FFFFFF",
                                 "   ....   ", "  .++++.  ", " .++++++. ", ".++@@++++.", ".++@.++++.",
                                 ".++++++++.", ".++++++++.", " .++++++. ", "  .++++.  ", "   ....   "};
    return QPixmap(image);
}

const QPixmap& MCSMpxORVStatusIcons::GetLamp(int operationMode, bool isMaster) const {
    if (operationMode == 0) return m_idle;
    return isMaster ? m_master : m_working;
}
