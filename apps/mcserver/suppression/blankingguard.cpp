// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/blankingguard.h>

#include <apps/mcserver/mpxorv/jobcontrol.h>
#include <apps/mcserver/mpxorv/mpxorv.h>

#include <devicecontrol/multichannelserver/common/gts/blanking.h>
#include <devicecontrol/multichannelserver/common/gts/gtskeys.h>
#include <devicecontrol/multichannelserver/common/gts/moduleview.h>
#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>
#include <devicecontrol/multichannelserver/common/mcstools.h>

#include <platform/values/tree.h>
#include <platform/values/value.h>

#include <optional>

using namespace std::chrono_literals;

namespace {

/// "a ground transmitter" if more cannot be told.
CodedText ToText(const SuppressionPlant& plant, const std::optional<BlankingSource>& source) {
    if (!source) return ECode::BlankedBySomebody;
    QString module = source->module;  // it may have gone, and what it left in the tree blanks on
    QString input = QString::number(source->input);
    plant.ForEachModule([&](const ModuleView& view) {
        if (view.identity.NodeName() != source->module) return;
        const auto number = static_cast<std::size_t>(source->input);
        module = view.GetName();
        if (number < view.labels.size() && !view.labels[number].isEmpty()) input = view.labels[number];
    });
    return {ECode::BlankedByInput, {module, input}};
}

}  // namespace

BlankingGuard::BlankingGuard(JobControl& jobs, const SuppressionPlant& plant, IClock& clock)
    : m_jobs(jobs),
      m_plant(plant),
      m_check(clock),
      m_modules(*this, values::Tree::Instance()->FindNode(gtskeys::NodePath())) {
    ObserveModules();
    m_jobs.SetGuard(this);
}

BlankingGuard::~BlankingGuard() {
    m_jobs.SetGuard(nullptr);
}

CodedText BlankingGuard::RefusalOf(MpxOrv& mpxOrv, double hz) {
    Blanking* const blanking = Blanking::Instance();
    BlankingClient* const client = &mpxOrv.GetBlankingClient();
    blanking->EnableBlankingForClient(client, mpxOrv.ObeysBlanking());
    if (!blanking->IsFrequencyBlanked(hz, client)) return {};
    const std::optional<BlankingSource> source = blanking->WhoBlanks(hz);
    if (source && m_witness) m_witness(*source, mpxOrv.GetName());
    return {ECode::BlankedBy, {MCSTools::FormatFrequency(hz), ToText(m_plant, source)}};
}

bool BlankingGuard::IsUnsupervised(double hz) const {
    return m_plant.IsUnsupervised(hz);
}

void BlankingGuard::Update(Observable* source, TChangeCode code) {
    if (m_modules.EndIfGoingAway(source, code)) return;
    if (m_modules.Is(source)) {
        if (code == changecode::StructureChanged) ObserveModules();
        return CheckSoon();
    }
    const auto found = m_observed.find(source);
    if (found == m_observed.end()) return;
    if (found->second.EndIfGoingAway(source, code)) {
        m_observed.erase(found);
        return;
    }
    if (code == changecode::ContentChanged || code == changecode::ItemsChanged) CheckSoon();
}

void BlankingGuard::ObserveModules() {
    for (values::TreeItem* item = m_modules ? m_modules->GetFirstChild() : nullptr; item != nullptr;
         item = item->GetNextSibling()) {
        if (!item->IsNode()) continue;
        const auto* const module = static_cast<values::Node*>(item);
        for (const QLatin1String name : {gtskeys::FrequencyAssignments, gtskeys::InputDiscretes})
            Observe(module->FindChild(name));
    }
}

void BlankingGuard::Observe(values::TreeItem* item) {
    auto* const value = dynamic_cast<values::ValueBase*>(item);
    if (value != nullptr && m_observed.count(value) == 0)
        m_observed.emplace(value, Observation<values::ValueBase>(*this, value));
}

void BlankingGuard::CheckSoon() {
    if (!m_check.IsRunning()) m_check.Start(0ms, [this] { m_jobs.GuardChanged(); });
}
