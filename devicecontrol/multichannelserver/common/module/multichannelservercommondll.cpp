// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/module/multichannelservercommondll.h>

#include <devicecontrol/multichannelserver/common/windowplacement.h>

#include <platform/app/translationcenter.h>

namespace {

const char* const Catalogue = "MultiChannelServerCommon";

}  // namespace

MultiChannelServerCommonDLL::MultiChannelServerCommonDLL(const QString& argument) : IDllInstance(argument) {
    TranslationCenter::Instance().Register(QLatin1String(Catalogue));
}

MultiChannelServerCommonDLL::~MultiChannelServerCommonDLL() {
    TranslationCenter::Instance().Unregister(QLatin1String(Catalogue));
}

void MultiChannelServerCommonDLL::CommitData() {
    WindowPlacement::CommitData();
}
