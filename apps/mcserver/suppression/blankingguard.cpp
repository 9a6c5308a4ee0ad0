// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/blankingguard.h>

#include <apps/mcserver/mpxorv/jobcontrol.h>
#include <apps/mcserver/mpxorv/mpxorv.h>

#include <devicecontrol/multichannelserver/common/gts/blanking.h>
#include <devicecontrol/multichannelserver/common/gts/gtskeys.h>
#include <devicecontrol/multichannelserver/common/mcstools.h>

#include <platform/values/tree.h>
#include <platform/values/value.h>

#include <optional>

using namespace std::chrono_literals;

namespace {

/// "a ground transmitter" if more cannot be told.
QString ToText(const std::optional<BlankingSource>& source) {
    if (!source) return QStringLiteral("a ground transmitter");
    return QStringLiteral("module %1, input %2").arg(source->module, QString::number(source->input));
}

}  // namespace

BlankingGuard::BlankingGuard(JobControl& jobs, IClock& clock)
    : m_jobs(jobs), m_check(clock), m_modules(values::Tree::Instance()->FindNode(gtskeys::NodePath())) {
    if (m_modules != nullptr) m_modules->AddObserver(this);
    ObserveModules();
    m_jobs.SetGuard(this);
}

BlankingGuard::~BlankingGuard() {
    m_jobs.SetGuard(nullptr);
    if (m_modules != nullptr) m_modules->DeleteObserver(this);
    for (Observable* const observed : m_observed)
        observed->DeleteObserver(this);
}

QString BlankingGuard::RefusalOf(MpxOrv& mpxOrv, double hz) {
    Blanking* const blanking = Blanking::Instance();
    BlankingClient* const client = &mpxOrv.GetBlankingClient();
    blanking->EnableBlankingForClient(client, mpxOrv.ObeysBlanking());
    if (!blanking->IsFrequencyBlanked(hz, client)) return QString();
    return QStringLiteral("%1 is blanked by %2")
        .arg(MCSTools::FormatFrequency(hz), ToText(blanking->WhoBlanks(hz)));
}

void BlankingGuard::Update(Observable* source, TChangeCode code) {
    if (m_modules != nullptr && source == m_modules) {
        if (code == changecode::GoingAway) return Forget(source);
        if (code == changecode::StructureChanged) ObserveModules();
        return CheckSoon();
    }
    auto* const value = dynamic_cast<values::ValueBase*>(source);
    if (value == nullptr) return;
    if (value->GetState() == values::GoingAway) return Forget(source);
    if (code == changecode::ContentChanged || code == changecode::ItemsChanged) CheckSoon();
}

void BlankingGuard::ObserveModules() {
    for (values::TreeItem* item = m_modules != nullptr ? m_modules->GetFirstChild() : nullptr;
         item != nullptr; item = item->GetNextSibling()) {
        if (!item->IsNode()) continue;
        const auto* const module = static_cast<values::Node*>(item);
        for (const QLatin1String name : {gtskeys::FrequencyAssignments, gtskeys::InputDiscretes})
            if (values::TreeItem* const child = module->FindChild(name)) Observe(child->GetObservable());
    }
}

void BlankingGuard::Observe(Observable* observable) {
    if (observable != nullptr && m_observed.insert(observable).second) observable->AddObserver(this);
}

void BlankingGuard::Forget(Observable* observable) {
    observable->DeleteObserver(this);
    m_observed.erase(observable);
    if (m_modules != nullptr && observable == m_modules) m_modules = nullptr;
}

void BlankingGuard::CheckSoon() {
    if (!m_check.IsRunning()) m_check.Start(0ms, [this] { m_jobs.GuardChanged(); });
}
