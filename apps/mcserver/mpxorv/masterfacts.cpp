// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/mpxorv/masterfacts.h>

#include <apps/common/iclock.h>
#include <apps/mcserver/mpxorv/mpxorvrequests.h>
#include <apps/pages/serverkeys.h>

#include <platform/values/valueaccess.h>

#include <algorithm>

namespace {

QString MasterPath(QLatin1String key) {
    const QString path = mcskeys::Join(mcskeys::DefaultBasePath(mcskeys::Status), serverkeys::Master);
    return mcskeys::Join(path, key);
}

values::Value<QString>* MasterText(QLatin1String key) {
    return values::ProvideValue<values::Value<QString>>(MasterPath(key), QString(), true, nullptr);
}

values::ValueNumeric<double>* MasterFrequency(QLatin1String key) {
    return values::ProvideValue<values::ValueNumeric<double>>(MasterPath(key), 0.0, 0.0,
                                                              MpxOrvRequests::MaxFrequency, true, nullptr);
}

}  // namespace

MasterFacts::MasterFacts()
    : m_pName(*this, MasterText(serverkeys::MasterName)),
      m_pSince(*this, MasterText(serverkeys::MasterSince)),
      m_pRangeFrom(*this, MasterFrequency(serverkeys::MasterRangeFrom)),
      m_pRangeTo(*this, MasterFrequency(serverkeys::MasterRangeTo)) {}

void MasterFacts::Show(const QString& name, const IClock& clock) {
    if (m_pSince) m_pSince->SetValue(name.isEmpty() ? QString() : clock.UtcText());
    if (m_pName) m_pName->SetValue(name);
    if (name.isEmpty()) ShowRange(0, 0);
}

void MasterFacts::ShowRange(double hz, double bandwidth) {
    const double from = hz != 0.0 ? std::max(hz - bandwidth / 2, MpxOrvRequests::MinFrequency) : 0.0;
    const double to = hz != 0.0 ? std::min(hz + bandwidth / 2, MpxOrvRequests::MaxFrequency) : 0.0;
    if (m_pRangeFrom) m_pRangeFrom->SetValue(from);
    if (m_pRangeTo) m_pRangeTo->SetValue(to);
}

void MasterFacts::Update(Observable* source, TChangeCode code) {
    m_pName.EndIfGoingAway(source, code);
    m_pSince.EndIfGoingAway(source, code);
    m_pRangeFrom.EndIfGoingAway(source, code);
    m_pRangeTo.EndIfGoingAway(source, code);
}
