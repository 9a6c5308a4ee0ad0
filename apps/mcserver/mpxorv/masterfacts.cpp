// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/mpxorv/masterfacts.h>

#include <apps/common/iclock.h>
#include <apps/pages/serverkeys.h>

#include <platform/values/valueaccess.h>

namespace {

values::Value<QString>* MasterText(QLatin1String key) {
    const QString path = mcskeys::Join(mcskeys::DefaultBasePath(mcskeys::Status), serverkeys::Master);
    return values::ProvideValue<values::Value<QString>>(mcskeys::Join(path, key), QString(), true, nullptr);
}

}  // namespace

MasterFacts::MasterFacts()
    : m_pName(*this, MasterText(serverkeys::MasterName)),
      m_pSince(*this, MasterText(serverkeys::MasterSince)) {}

void MasterFacts::Show(const QString& name, const IClock& clock) {
    if (m_pSince) m_pSince->SetValue(name.isEmpty() ? QString() : clock.UtcText());
    if (m_pName) m_pName->SetValue(name);
}

void MasterFacts::Update(Observable* source, TChangeCode code) {
    if (!m_pName.EndIfGoingAway(source, code)) m_pSince.EndIfGoingAway(source, code);
}
