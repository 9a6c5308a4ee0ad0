// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/moduleentry.h>

#include <devicecontrol/multichannelserver/common/module/multichannelservercommondll.h>

#include <new>

// No exception may leave: the caller may be written in another language.
IDllInstance* ARCreateEx(const wchar_t* argument) {
    try {
        const QString text = argument != nullptr ? QString::fromWCharArray(argument) : QString();
        return new (std::nothrow) MultiChannelServerCommonDLL(text);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void ARDestroy(IDllInstance* instance) {
    delete instance;
}
