// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/configfaults.h>

#include <apps/mcserver/log/serverlog.h>
#include <apps/mcserver/suppression/sectionaudit.h>

#include <devicecontrol/multichannelserver/common/gts/gtskeys.h>
#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>

#include <platform/config/cfgcenter.h>
#include <platform/config/icfg.h>

#include <memory>

namespace {

CodedText DamageText(const CfgDamage& damage) {
    if (damage.keptAs.isEmpty()) return {ECode::ConfigEditUnusable, {damage.file, damage.reason}};
    const ECode code = damage.isUsed ? ECode::ConfigWrittenAnew : ECode::ConfigUnusable;
    return {code, {damage.file, damage.reason, damage.keptAs}};
}

/// A section whose name is written in other letters is another one.
void LookForMistypedSection(ICfg& root, std::vector<CodedText>* faults) {
    QStringList names;
    for (const QString& key : root.GetKeys()) {
        const QString name = key.section(QLatin1Char('/'), 0, 0);
        const bool isMeant = name.compare(gtskeys::Gts, Qt::CaseInsensitive) == 0 && name != gtskeys::Gts;
        if (isMeant && !names.contains(name)) names << name;
    }
    if (!names.isEmpty())
        faults->push_back({ECode::SectionMistyped, {names.join(QStringLiteral(", ")), gtskeys::Gts}});
}

void LookAtSection(std::vector<CodedText>* faults) {
    const std::unique_ptr<ICfg> root(CfgCenter::Instance().OpenRoot());
    LookForMistypedSection(*root, faults);
    const std::unique_ptr<ICfg> section(root->OpenSection(gtskeys::Gts));
    if (!section) return;
    const SectionAudit audit(*section, SuppressionPlant::GetConfiguredSettings());
    faults->insert(faults->end(), audit.GetFaults().begin(), audit.GetFaults().end());
    if (!audit.IsToBeWrittenOver()) return;
    const QString copy = CfgCenter::Instance().KeepCopy();
    if (!copy.isEmpty()) faults->push_back({ECode::ConfigCopyKept, {copy}});
}

}  // namespace

std::vector<CodedText> configfaults::TakeDamages() {
    std::vector<CodedText> texts;
    for (const CfgDamage& damage : CfgCenter::Instance().TakeDamages())
        texts.push_back(DamageText(damage));
    return texts;
}

std::vector<CodedText> configfaults::TellAll(ServerLog& log) {
    std::vector<CodedText> faults = TakeDamages();
    LookAtSection(&faults);
    for (const CodedText& fault : faults)
        log.Write(fault);
    return faults;
}
